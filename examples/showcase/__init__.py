"""The usage stories, told on the terminal, in tables and in pictures."""
