"""A page of the guide: the template of its language, filled with looks, strips and controls."""
import base64
import html
import re

from maker import png
from maker.pictures import strip_tiles

WORDS = {
    "en": {"to": " to ", "on": "on", "off": "off", "alt": "{name}: {caption}"},
    "ja": {"to": "〜", "on": "オン", "off": "オフ", "alt": "{name}：{caption}"},
}


def stored_pictures(page):
    """{key: file} of the pictures in a page that was made before."""
    found = re.findall(r'<img data-picture="([^"]+)" src="data:image/png;base64,([^"]+)"', page)
    return {key: base64.b64decode(text) for key, text in found}


def files_of(pictures, stored):
    """{key: file}. One that shows the same keeps its bytes, whatever the compressor's version."""
    files = {}
    for key, picture in pictures.items():
        file = stored.get(key)
        same = file is not None and png.as_picture(png.decode(file)) == picture
        files[key] = file if same else png.encode(picture)
    return files


def value_text(value, lang):
    if isinstance(value, bool):
        return WORDS[lang]["on" if value else "off"]
    if isinstance(value, list):
        return ", ".join(map(str, value))
    return str(value)


class Page:
    def __init__(self, lang, source, params, labels, files):
        self.lang, self.source, self.params, self.files = lang, source, params, files
        self.words = {**WORDS[lang], **labels[lang]}

    def fill(self, template, style):
        page = template.replace("{{style}}", style)
        page = page.replace("{{looks}}", "\n".join(map(self.look, self.source["looks"])))
        page = re.sub(r"\{\{strip (\w+)\}\}",
                      lambda found: self.strip(found[1], self.source["ideas"][found[1]], found[1]),
                      page)
        page = page.replace("{{contents}}", self.contents())
        return page.replace("{{controls}}", self.controls())

    def image(self, key, name, caption):
        file = self.files[key]
        width, height = int.from_bytes(file[16:20], "big"), int.from_bytes(file[20:24], "big")
        alt = html.escape(self.words["alt"].format(name=name, caption=caption))
        data = base64.b64encode(file).decode()
        return (f'<img data-picture="{key}" src="data:image/png;base64,{data}" alt="{alt}" '
                f'width="{width}" height="{height}">')

    def strip(self, key, strip, name):
        figures = []
        for i, (own, _, _, caption) in enumerate(strip_tiles(strip)):
            text = caption[self.lang] if caption else value_text(own[strip["name"]], self.lang)
            figures.append(f"<figure>{self.image(f'{key}-{i}', name, text)}"
                           f"<figcaption>{html.escape(text)}</figcaption></figure>")
        return '<div class="strip">\n' + "\n".join(figures) + "\n</div>"

    def look(self, look):
        rows = "\n".join(
            f"<tr><th scope=\"row\">{self.link(name)}</th>"
            f"<td>{html.escape(value_text(value, self.lang))}</td></tr>"
            for name, value in look["set"].items())
        title = html.escape(look[self.lang])
        about = look["about"][self.lang]
        image = self.image(f'look-{look["key"]}-0', look[self.lang], about)
        return (f'<section class="look" id="look-{look["key"]}"><h3>{title}</h3>\n{image}\n'
                f'<div><p>{html.escape(about)}</p>\n'
                f'<table>{rows}</table></div></section>')

    def link(self, name):
        number = next(param["id"] for param in self.params if param["name"] == name)
        return f'<a href="#p{number}">{html.escape(name)}</a>'

    def groups(self):
        """[(group start or None, its controls)], in the order of the panel."""
        groups = []
        for param in self.params:
            if param["kind"] == "group start":
                groups.append((param, []))
            elif param["words"] is not None:
                if not groups or (param["group"] or "") != (groups[-1][0] or {"name": ""})["name"]:
                    groups.append((None, []))
                groups[-1][1].append(param)
        return [(start, controls) for start, controls in groups if controls]

    def contents(self):
        items = []
        for start, controls in self.groups():
            links = ", ".join(self.link(param["name"]) for param in controls)
            head = ""
            if start:
                head = f'<a href="#p{start["id"]}">{html.escape(start["name"].strip())}</a>: '
            items.append(f"<li>{head}{links}</li>")
        return "<ul>\n" + "\n".join(items) + "\n</ul>"

    def controls(self):
        parts = []
        for start, controls in self.groups():
            if start:
                words = start["words"][self.lang]
                what = html.escape(" ".join(filter(None, [words["what"], words["with"]])))
                title = html.escape(start["name"].strip())
                parts.append(f'<h2 class="group" id="p{start["id"]}">{title}</h2>'
                             f"\n<p>{what}</p>")
            parts += map(self.control, controls)
        return "\n".join(parts)

    def control(self, param):
        words = param["words"][self.lang]
        rows = [(self.words["unit"], words["unit"]), self.range_of(param),
                (self.words["with"], words["with"]), (self.words["hint"], words["hint"])]
        facts = "".join(f"<dt>{head}</dt><dd>{html.escape(text)}</dd>"
                        for head, text in rows if text)
        strip = dict(self.source["controls"][str(param["id"])], name=param["name"])
        title = html.escape(param["name"])
        return (f'<section class="control" id="p{param["id"]}"><h3>{title}</h3>\n'
                f'<p class="what">{html.escape(words["what"])}</p>\n'
                f'{self.strip("p" + str(param["id"]), strip, param["name"])}\n'
                f"<dl>{facts}</dl></section>")

    def range_of(self, param):
        """(head, text) of the row about range and default."""
        number = lambda value: f"{value:g}"
        span = lambda ends: self.words["to"].join(map(number, ends))
        default = param["default"]
        is_number = not isinstance(default, (bool, str))
        default = number(default) if is_number else value_text(default, self.lang)
        head = self.words["default"]
        if "valid" not in param:
            return head, default
        return self.words["range"], (f'{span(param["valid"])} ({self.words["slider"]} '
                                     f'{span(param["slider"])}), {head.lower()} {default}')


def troubles(page):
    """What is wrong with a page by itself: links into nothing, ids twice, pictures without words."""
    ids = re.findall(r'\bid="([^"]+)"', page)
    found = [f"the link #{target} leads nowhere"
             for target in sorted(set(re.findall(r'href="#([^"]+)"', page)) - set(ids))]
    found += [f"the id {name} stands twice" for name in sorted(set(ids)) if ids.count(name) > 1]
    found += [f"{left} was not filled" for left in re.findall(r"\{\{[^}]*\}\}", page)]
    nameless = re.findall(r'<img data-picture="([^"]+)"[^>]*? alt=""', page)
    return found + [f"the picture {key} has no words" for key in nameless]
