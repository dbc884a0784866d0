"""How the documentation is built: `make docs`."""

import sys
from importlib.metadata import metadata
from pathlib import Path

# Once it is imported, Sphinx doesn't import its stub file in its place, which is for type checkers.
import sembra.external.dsettlement  # noqa: F401

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE / "_extensions"), str(HERE.parent)]

_package = metadata("sembra-external-dsettlement")

project = "sembra.external.dsettlement"
author = copyright = "the sembra developers"
release = version = _package["Version"]

extensions = [
    "myst_parser",
    "sphinx.ext.autodoc",
    "sphinx.ext.napoleon",
    "sphinx_copybutton",
    "sphinx_gallery.gen_gallery",
    "docstrings",
    "outside_links",
]
exclude_patterns = ["gallery", "_extensions", "**/*.py", "**/README.rst"]
nitpicky = False
default_role = "code"

myst_enable_extensions = ["attrs_inline", "colon_fence"]
myst_heading_anchors = 3

autodoc_member_order = "bysource"
autodoc_class_signature = "separated"
autodoc_typehints = "signature"
autodoc_default_options = {"members": True, "inherited-members": True, "undoc-members": True}
python_maximum_signature_line_length = 88
python_use_unqualified_type_names = True
add_module_names = False
toc_object_entries_show_parents = "hide"

sphinx_gallery_conf = {
    "examples_dirs": "gallery",
    "gallery_dirs": "examples",
    "filename_pattern": "/",
    "within_subsection_order": "FileNameSortKey",
    "image_scrapers": ("matplotlib",),
    "capture_repr": (),
    "download_all_examples": False,
    "show_memory": False,
    "write_computation_times": False,
    "show_signature": False,
    "min_reported_time": 1e9,
    "remove_config_comments": True,
}

html_theme = "furo"
html_title = "sembra.external.dsettlement"
html_static_path = ["style"]
html_css_files = ["site.css"]
html_show_sourcelink = False
html_copy_source = False
