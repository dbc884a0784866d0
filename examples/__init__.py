"""Programs that show the module at work; each can be run by itself."""
