"""The HTTP client for a service elsewhere: connections that are kept, and one deadline per exchange."""
