"""What the service can be asked for."""

PATH = "/filldsettlementtemplate/v1/jobs/"

SMALL = 100_000
"""Up to how many bytes a document is filled in at once, since handing it to a thread takes as long.
A larger one would hold up the others."""
