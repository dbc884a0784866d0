"""The worker: settles `.sli` input files on this machine and gives back `.sld` result files.

It covers whatever a model can describe, and most of what other input files ask for: all soil models
with both kinds of consolidation. What it doesn't cover ends a job with an error that says so, or is
left away with a warning where it only adds results.
"""
