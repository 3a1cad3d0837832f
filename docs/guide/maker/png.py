"""PNG files, as far as the guide needs them. A picture is (width, height, rows of RGB bytes)."""
import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = {0: 1, 2: 3, 6: 4}  # by colour type


def _chunks(data):
    at = len(SIGNATURE)
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        yield kind, data[at + 8:at + 8 + length]
        at += length + 12


def _unfilter(kind, row, above, step):
    if not any(row) and not any(above):
        return row  # most rows of a field of lines are empty
    if kind == 1:
        for i in range(step, len(row)):
            row[i] = (row[i] + row[i - step]) & 255
    elif kind == 2:
        for i, up in enumerate(above):
            row[i] = (row[i] + up) & 255
    elif kind == 3:
        for i, up in enumerate(above):
            row[i] = (row[i] + ((row[i - step] if i >= step else 0) + up) // 2) & 255
    elif kind == 4:
        for i, up in enumerate(above):
            left, corner = (row[i - step], above[i - step]) if i >= step else (0, 0)
            to_left, to_up = abs(up - corner), abs(left - corner)
            to_corner = abs(left + up - 2 * corner)
            nearest = left if to_left <= to_up and to_left <= to_corner else (
                up if to_up <= to_corner else corner)
            row[i] = (row[i] + nearest) & 255
    return row


def decode(data):
    """(width, height, channels, rows), 8 bits a channel, of a file of 8 bits."""
    body = b""
    for kind, content in _chunks(data):
        if kind == b"IHDR":
            width, height, _, colour, _, _, _ = struct.unpack(">IIBBBBB", content)
        elif kind == b"IDAT":
            body += content
    channels = CHANNELS[colour]
    raw = zlib.decompress(body)
    stride = width * channels
    above = bytearray(stride)
    rows = []
    for y in range(height):
        start = y * (stride + 1)
        above = _unfilter(raw[start], bytearray(raw[start + 1:start + 1 + stride]), above, channels)
        rows.append(above)
    return width, height, channels, rows


def over(decoded, paper):
    """The picture on an opaque ground: paper(x, y) gives a grey level."""
    width, height, channels, rows = decoded
    result = []
    for y, row in enumerate(rows):
        out = bytearray()
        if channels == 4 and row.count(0, 0) >= 3 * width and not any(
                any(row[c::4]) for c in range(3)):
            # Black ink, as on most pictures: what shows is the ground under the alpha.
            for x, alpha in enumerate(row[3::4]):
                out += bytes(((paper(x, y) * (255 - alpha) + 127) // 255,)) * 3
            result.append(out)
            continue
        for x in range(width):
            pixel = row[x * channels:(x + 1) * channels]
            if channels < 4 or pixel[3] == 255:
                out += pixel[:3] if channels > 2 else pixel * 3
            else:
                ground = paper(x, y) * (255 - pixel[3]) + 127
                out += bytes((c * pixel[3] + ground) // 255 for c in pixel[:3])
        result.append(out)
    return width, height, result


def quantised(picture):
    """With 32 levels a channel, which the eye forgives and the file is smaller for."""
    width, height, rows = picture
    level = bytes((v >> 3) * 255 // 31 for v in range(256))
    return width, height, [row.translate(level) for row in rows]


def encode(picture):
    """The file of a quantised picture."""
    width, height, rows = picture
    grey = all(row[0::3] == row[1::3] == row[2::3] for row in rows)
    raw = bytearray()
    for row in rows:
        raw.append(0)
        raw += row[0::3] if grey else row
    head = struct.pack(">IIBBBBB", width, height, 8, 0 if grey else 2, 0, 0, 0)

    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body
                + struct.pack(">I", zlib.crc32(kind + body)))

    return (SIGNATURE + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(bytes(raw), 9))
            + chunk(b"IEND", b""))


def as_picture(decoded):
    """A decoded file without alpha as a picture."""
    return over(decoded, lambda x, y: 255)
