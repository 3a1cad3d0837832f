"""The guide's pictures: what they are of, and drawing them with the built program."""
import json
import pathlib
import subprocess
import tempfile
from concurrent.futures import ProcessPoolExecutor

from maker import png

ROOT = pathlib.Path(__file__).resolve().parents[3]
TILE = (384, 216)
LOOK_FRAME = (960, 540)  # shown at half its size
# Two pictures of a strip differ visibly when this part of their pixels differs by more than this
# much in some channel.
VISIBLE_PART, VISIBLE_LEVEL = 0.01, 48


def strip_tiles(strip):
    """The pictures of a strip: (values, frame, caption by language) each."""
    common = strip.get("set", {})
    if "frames" in strip:
        return [({}, common, frame, {"en": f"frame {frame}", "ja": f"フレーム {frame}"})
                for frame in strip["frames"]]
    if "values" in strip:
        return [({strip["name"]: value}, common, 0, None) for value in strip["values"]]
    return [(tile["set"], common, 0, {"en": tile["en"], "ja": tile["ja"]})
            for tile in strip["tiles"]]


def plan(source, names):
    """[(key, values, frame, kind)] of all pictures; a key is a strip's name and a number."""
    pictures = []
    strips = {f"p{number}": dict(strip, name=names[int(number)])
              for number, strip in source["controls"].items()}
    strips.update(source["ideas"])
    for key, strip in strips.items():
        kind = "moving" if "frames" in strip else "over" if strip.get("picture") else "plain"
        for i, (own, common, frame, _) in enumerate(strip_tiles(strip)):
            pictures.append((f"{key}-{i}", {**source["base"], **common, **own}, frame, kind))
    for look in source["looks"]:
        pictures.append((f"look-{look['key']}-0", look["set"], 0, "look"))
    return pictures


def _checker(x, y):
    return 120 if (x // 8 + y // 8) % 2 else 160


def _ground(scene, size):
    """The largest upright part of the demo's slanted panel at another size, as a file."""
    left, top, width, height = 56, 30, 364, 205
    rows = scene[2]
    scaled = []
    for y in range(size[1]):
        row = rows[top + y * height // size[1]]
        scaled.append(b"".join(row[(left + x * width // size[0]) * 3:][:3] for x in range(size[0])))
    return png.encode((size[0], size[1], [bytearray(row) for row in scaled]))


def _render(program, folder, name, frames, values, size, what):
    """Renders the frames into name.FRAME.png, by values that were made for a frame of this size."""
    look = folder / f"{name}.json"
    look.write_text(json.dumps({"size": size, "values": values}))
    subprocess.run([program, "render", *what, "-q", "-o", folder / f"{name}.%d.png",
                    "-f", ",".join(map(str, frames)), "--look", look], check=True)


def _render_stills(program, folder, kind, stills, defaults, size, what):
    """All pictures of a kind in one run of the program, each under keys at a frame of its own."""
    names = {name for _, values, _, _ in stills for name in values}
    keyed = {name: {i: values.get(name, defaults[name])
                    for i, (_, values, _, _) in enumerate(stills)} for name in names}
    _render(program, folder, kind, range(len(stills)), keyed, size, what)
    return {key: folder / f"{kind}.{i}.png" for i, (key, _, _, _) in enumerate(stills)}


def _read(job):
    key, file, checkered = job
    paper = _checker if checkered else lambda x, y: 255
    return key, png.quantised(png.over(png.decode(file.read_bytes()), paper))


def draw_all(program, source, params):
    """{key: picture} with quantised pixels. `params` is the program's list."""
    scene = png.over(png.decode((ROOT / "docs/demo-picture.png").read_bytes()), lambda x, y: 0)
    defaults = {param["name"]: param["default"] for param in params}
    pictures = plan(source, {param["id"]: param["name"] for param in params})
    of_kind = lambda kind: [picture for picture in pictures if picture[3] == kind]
    with tempfile.TemporaryDirectory() as name, ProcessPoolExecutor() as pool:
        folder = pathlib.Path(name)
        (folder / "small.png").write_bytes(_ground(scene, TILE))
        (folder / "large.png").write_bytes(_ground(scene, LOOK_FRAME))
        empty = ["--size", f"{TILE[0]}x{TILE[1]}"]
        runs = [("plain", source["frame"], empty),
                ("over", source["frame"], ["-i", folder / "small.png"]),
                ("look", list(LOOK_FRAME), ["-i", folder / "large.png", "--scale", "1/2"])]
        files = {}
        for kind, size, what in runs:
            files |= _render_stills(program, folder, kind, of_kind(kind), defaults, size, what)
        # What moves by itself shows its own frames.
        strips = {}
        for key, values, frame, _ in of_kind("moving"):
            strips.setdefault(key.rsplit("-", 1)[0], []).append((key, values, frame))
        for strip, tiles in strips.items():
            frames = [frame for _, _, frame in tiles]
            _render(program, folder, strip, frames, tiles[0][1], source["frame"], empty)
            files |= {key: folder / f"{strip}.{frame}.png" for key, _, frame in tiles}
        jobs = [(key, files[key], kind == "over") for key, _, _, kind in pictures]
        return dict(pool.map(_read, jobs, chunksize=8))


def differing_part(first, second):
    """How many of the pixels, as a part of 1, differ visibly."""
    count = 0
    for a, b in zip(first[2], second[2]):
        if a == b:
            continue
        for x in range(0, len(a), 3):
            if any(abs(a[i] - b[i]) > VISIBLE_LEVEL for i in range(x, x + 3)):
                count += 1
    return count / (first[0] * first[1])


def faults(pictures, source):
    """What is wrong with the strips, as sentences: two pictures that do not differ visibly, or a
    last one that is not the first where the strip is said to return."""
    strips = {}
    for key in pictures:
        strips.setdefault(key.rsplit("-", 1)[0], []).append(key)
    returning = {f"p{number}" for number, strip in source["controls"].items()
                 if strip.get("returns")}
    found = []
    for strip, keys in strips.items():
        if strip in returning:
            first, last = keys[0], keys.pop()
            if pictures[first] != pictures[last]:
                found.append(f"{last} is not {first} again")
        found += [f"{a} and {b} show the same: {part:.2%} of their pixels differ"
                  for i, a in enumerate(keys) for b in keys[i + 1:]
                  if (part := differing_part(pictures[a], pictures[b])) < VISIBLE_PART]
    return found
