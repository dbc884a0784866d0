"""Running jobs of the worker outside this process."""
