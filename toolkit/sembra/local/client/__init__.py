"""The HTTP client of the post: connections that are kept, and one deadline per exchange."""
