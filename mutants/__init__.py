"""Whether the tests notice small faults in the C++ code: `make mutants`."""
