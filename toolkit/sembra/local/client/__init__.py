"""The HTTP client for a service elsewhere: kept connections, and one deadline per exchange."""
