# Sphinx over the pages here and those that scripts/manual.py makes of the headers.
import json
import pathlib
import re

from docutils import nodes
from sphinx import addnodes
from sphinx.domains.c import CDomain
from sphinx.transforms import SphinxTransform
from sphinx.util import logging

names = json.loads((pathlib.Path(__file__).parent / "names.json").read_text())
functions = set(names["functions"])

project = "tevs"
release = version = names["version"]
copyright = "the tevs authors"
html_title = f"tevs {version}"
extensions = ["myst_parser"]
myst_heading_anchors = 3
highlight_language = "none"
html_theme = "alabaster"
html_theme_options = {"fixed_sidebar": True, "page_width": "1280px", "sidebar_width": "260px", "body_max_width": "970px", "show_powered_by": False}
html_sidebars = {"**": ["about.html", "searchbox.html", "navigation.html"]}
html_static_path = ["static"]
html_css_files = ["manual.css"]
html_copy_source = False
html_show_sphinx = False
html_use_index = False   # reference/functions is the index: all names here begin alike


class Names(SphinxTransform):
    """Functions and operations in literal text become links. What looks like one and is none is a warning, which ends the build."""
    default_priority = 500

    def apply(self):
        for node in list(self.document.findall(nodes.literal)):
            name = node.astext()
            if isinstance(node.parent, (addnodes.pending_xref, nodes.reference)) or not re.fullmatch(r"tev(s[A-Z0-9]|[A-Z_])\w*\*?", name):
                continue
            if name in functions:
                link = addnodes.pending_xref("", refdomain="c", reftype="func", reftarget=name, refexplicit=False, refwarn=True, refdoc=self.env.docname)
            elif name in names["operations"]:
                link = addnodes.pending_xref("", refdomain="std", reftype="ref", reftarget=names["operations"][name], refexplicit=True, refwarn=True,
                                             refdoc=self.env.docname)
            elif name.endswith("*") and any(f.startswith(name[:-1]) for f in functions):
                first = min((o for o in names["operations"] if o.startswith(name[:-1])), key=lambda o: (len(o), o))
                link = addnodes.pending_xref("", refdomain="std", reftype="ref", reftarget=names["operations"][first], refexplicit=True, refwarn=True,
                                             refdoc=self.env.docname)
            else:
                logging.getLogger(__name__).warning("%s is no function of the library", name, location=node)
                continue
            node.replace_self(link)
            link += node


class Functions(CDomain):
    """Names of arguments are no subjects of the search."""
    def get_objects(self):
        return (o for o in super().get_objects() if o[2] != "functionParam")


def setup(app):
    app.add_transform(Names)
    app.add_domain(Functions, override=True)
