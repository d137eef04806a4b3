#!/usr/bin/env python3
"""Writes the resources that the ambience, depth-of-field and live HUD services find.

Run it from anywhere (Python 3, standard library only):

    python3 resources/generate.py

It (re)writes, next to itself, with the same bytes on every run:

  graphic/AmbienceStudio/ambiences/Ambience_default_HQ.png
      the studio folder's thumbnail: a 64x64 8-bit RGB PNG of a soft studio backdrop.
  graphic/AmbienceStudio/ambiences/<name>.hdr
      one environment image per ambience name the library resolves (see AMBIENCES):
      64x32 equirectangular Radiance RGBE images ("#?RADIANCE", FORMAT=32-bit_rle_rgbe,
      "-Y 32 +X 64": the top row, looking straight up, comes first), run-length
      encoded scanlines. Column x looks towards the azimuth -180 + 360 (x + 0.5) / 64
      degrees, row y towards the elevation 90 - 180 (y + 0.5) / 32 degrees. Every image
      holds a light source (panel, lamp or sun) far above 1.0.
  graphic/dof/<name>.dds
      the thirteen bokeh textures (see BOKEH): 128x128 uncompressed DDS files, one
      8-bit luminance channel (DDPF_LUMINANCE, L8), no mipmaps.
  msgcatalog/QAVRbaLiveHUDDlg.catalog
      the texts of the live rendering heads-up display.

Reading of the bokeh names (also in graphic/dof/README.md). Every texture is a disc of
the same radius R = 60 pixels centred in the image, black outside R; the numbers are
percentages of R counted inwards from the rim and say how soft the rim is:

  Circle_E                 full intensity out to (100 - E)% of R, then a straight
                           ramp down to zero at R (a hard disc with an E% edge);
  Circle_A_B_progressive   full intensity out to (100 - B)% of R, then a straight
                           ramp down to half intensity at (100 - A)% of R, then a
                           straight ramp down to zero at R: the soft band is B% wide
                           and its outer A% is the rim proper.

Intensity is sampled at pixel centres and stored as round(255 * I). Along the
library's aperture ladder (Circle_5 for the smallest apertures up to
Circle_80_100_progressive for the widest) every texture is softer than the one before.
"""

import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
AMBIENCE_DIR = os.path.join(HERE, "graphic", "AmbienceStudio", "ambiences")
DOF_DIR = os.path.join(HERE, "graphic", "dof")
CATALOG_DIR = os.path.join(HERE, "msgcatalog")

HDR_WIDTH = 64
HDR_HEIGHT = 32
SUPERSAMPLING = 4  # samples per pixel side, so that small lights are not missed

DEG = math.pi / 180.0


# ---------------------------------------------------------------------------
# Small helpers for the environments. Directions are (azimuth, elevation) in
# degrees; colours are linear RGB triples.


def mix(a, b, t):
    t = min(max(t, 0.0), 1.0)
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def scale(c, k):
    return tuple(x * k for x in c)


def add(a, b):
    return tuple(x + y for x, y in zip(a, b))


def grey(v):
    return (v, v, v)


def wrap(az):
    """An azimuth brought into [-180, 180)."""
    return (az + 180.0) % 360.0 - 180.0


def in_panel(az, el, center_az, center_el, half_az, half_el):
    """A rectangle in azimuth and elevation, e.g. a softbox or a window."""
    return abs(wrap(az - center_az)) <= half_az and abs(el - center_el) <= half_el


def angle_to(az, el, center_az, center_el):
    """The angle in degrees between two directions."""
    a1, e1, a2, e2 = az * DEG, el * DEG, center_az * DEG, center_el * DEG
    cosine = math.sin(e1) * math.sin(e2) + math.cos(e1) * math.cos(e2) * math.cos(a1 - a2)
    return math.acos(min(max(cosine, -1.0), 1.0)) / DEG


def disc_light(az, el, center_az, center_el, radius, color, glow=0.0, glow_width=10.0):
    """A round light (sun, lamp, spot) with an optional soft halo around it."""
    d = angle_to(az, el, center_az, center_el)
    if d <= radius:
        return color
    if glow > 0.0:
        return scale(color, glow * math.exp(-(d - radius) / glow_width))
    return (0.0, 0.0, 0.0)


def cyclorama(el, top, horizon, floor):
    """A seamless studio backdrop: walls from the horizon colour to the top one, and
    a floor that brightens where it meets the wall."""
    if el >= 0.0:
        return mix(horizon, top, el / 90.0)
    return mix(horizon, floor, -el / 25.0)


def sky(el, zenith, horizon):
    return mix(horizon, zenith, math.sqrt(max(el, 0.0) / 90.0))


def ground_point(az, el, eye_height):
    """Where a downward direction meets the ground: (across, along) in metres."""
    distance = eye_height / math.tan(-el * DEG)
    return distance * math.sin(az * DEG), distance * math.cos(az * DEG)


# ---------------------------------------------------------------------------
# The environments, one function of the direction each.


def studio_pure_white(az, el):
    c = cyclorama(el, grey(1.0), grey(0.85), grey(0.75))
    if el > 55.0:
        c = grey(6.0)  # the large overhead softbox
    return c


def studio_white_mirror(az, el):
    def upper(az, el):
        c = cyclorama(el, grey(0.92), grey(0.8), grey(0.8))
        for strip in (-60.0, 60.0):
            if in_panel(az, el, strip, 25.0, 4.0, 25.0):
                c = grey(8.0)
        return c

    if el >= 0.0:
        return upper(az, el)
    return scale(upper(az, -el), 0.75)  # the glossy floor reflects the room


def studio_white_review(az, el):
    c = cyclorama(el, grey(0.9), grey(0.8), grey(0.7))
    if in_panel(az, el, -45.0, 25.0, 10.0, 8.0):
        c = grey(10.0)  # key light
    elif in_panel(az, el, 60.0, 15.0, 12.0, 10.0):
        c = grey(3.0)  # fill light
    elif el > 72.0:
        c = grey(5.0)  # top light
    return c


def studio_panel_2(az, el):
    c = cyclorama(el, grey(0.02), grey(0.015), grey(0.02))
    if in_panel(az, el, 0.0, 65.0, 30.0, 15.0):
        c = grey(20.0)  # the overhead panel
    elif in_panel(az, el, 100.0, 25.0, 10.0, 15.0):
        c = grey(12.0)  # the side panel
    return c


def studio_dark_review(az, el):
    c = cyclorama(el, grey(0.04), grey(0.03), grey(0.04))
    for strip in (0.0, 90.0, 180.0, -90.0):
        if in_panel(az, el, strip, 22.0, 3.5, 22.0):
            c = grey(10.0)
    return c


def studio_white_design(az, el):
    c = cyclorama(el, grey(0.95), grey(0.7), grey(0.6))
    if el > 60.0:
        c = grey(5.0)
    elif in_panel(az, el, 180.0, 6.0, 70.0, 3.0):
        c = grey(4.0)  # a long strip along the back wall
    return c


def studio_blue_design(az, el):
    c = cyclorama(el, (0.15, 0.3, 0.7), (0.08, 0.16, 0.45), (0.05, 0.08, 0.2))
    if el > 62.0:
        c = grey(8.0)
    elif in_panel(az, el, 90.0, 20.0, 4.0, 18.0) or in_panel(az, el, -90.0, 20.0, 4.0, 18.0):
        c = (6.0, 7.0, 8.0)  # cool side strips
    return c


def studio_dark_design(az, el):
    c = cyclorama(el, grey(0.06), grey(0.03), grey(0.02))
    if el > 65.0:
        c = grey(6.0)
    elif in_panel(az, el, 150.0, 20.0, 3.0, 20.0) or in_panel(az, el, -150.0, 20.0, 3.0, 20.0):
        c = grey(9.0)  # rim lights behind the subject
    return c


def outdoor(az, el):
    if el >= 0.0:
        c = sky(el, (0.15, 0.3, 0.85), (0.7, 0.8, 0.95))
        return add(c, disc_light(az, el, 40.0, 35.0, 2.5, (400.0, 380.0, 340.0), 0.002, 8.0))
    return mix((0.16, 0.2, 0.08), (0.08, 0.12, 0.04), -el / 30.0)  # a meadow


def studio_spot_1(az, el):
    c = cyclorama(el, grey(0.01), grey(0.01), grey(0.015))
    if el < -50.0:
        c = mix(grey(0.015), grey(0.3), (-el - 50.0) / 30.0)  # the pool of light on the floor
    return add(c, disc_light(az, el, 0.0, 60.0, 4.0, (80.0, 76.0, 70.0), 0.01, 6.0))


def interior_hall_3_a(az, el):
    if el < 0.0:
        c = mix((0.3, 0.27, 0.24), (0.2, 0.18, 0.16), -el / 90.0)  # polished stone
        for window in (-60.0, -20.0, 20.0, 60.0):  # the windows' reflections
            if in_panel(az, el, window, -8.0, 6.0, 6.0):
                c = (0.9, 0.95, 1.05)
        return c
    if el > 35.0:
        c = (0.3, 0.28, 0.25)  # the ceiling with its rows of lamps
        for row_el in (55.0, 78.0):
            for lamp in range(8):
                c = add(c, disc_light(az, el, -157.5 + 45.0 * lamp, row_el, 3.0,
                                      (25.0, 22.5, 18.75)))
        return c
    for window in (-60.0, -20.0, 20.0, 60.0):
        if in_panel(az, el, window, 20.0, 8.0, 15.0):
            return (3.5, 3.8, 4.2)  # daylight through the tall windows
    return (0.45, 0.38, 0.3)  # warm walls


def exterior_road_2(az, el):
    if el >= 0.0:
        hills = 3.0 + 2.0 * math.sin(3.0 * az * DEG) + 1.5 * math.sin(7.0 * az * DEG + 1.0)
        if el < hills:
            return (0.04, 0.07, 0.03)
        c = sky(el, (0.2, 0.35, 0.8), (0.8, 0.75, 0.7))
        return add(c, disc_light(az, el, -70.0, 12.0, 2.5, (300.0, 240.0, 170.0), 0.005, 10.0))
    across, along = ground_point(az, el, 1.5)
    if abs(across) < 0.12 and along % 6.0 < 3.0:
        return (0.6, 0.6, 0.55)  # the dashed centre line
    if abs(across) < 4.0:
        return (0.06, 0.06, 0.065)  # asphalt
    return (0.08, 0.1, 0.04)  # the verges


BUILDINGS = [  # (height in degrees, facade colour), one per 20 degrees of azimuth
    (18.0, (0.5, 0.45, 0.4)), (26.0, (0.3, 0.35, 0.42)), (12.0, (0.6, 0.55, 0.45)),
    (30.0, (0.25, 0.3, 0.38)), (22.0, (0.55, 0.5, 0.48)), (9.0, (0.45, 0.35, 0.3)),
    (0.0, None), (0.0, None), (15.0, (0.5, 0.48, 0.44)), (28.0, (0.28, 0.33, 0.4)),
    (20.0, (0.62, 0.58, 0.5)), (14.0, (0.4, 0.36, 0.33)), (24.0, (0.3, 0.34, 0.4)),
    (10.0, (0.58, 0.5, 0.42)), (0.0, None), (19.0, (0.5, 0.46, 0.4)),
    (27.0, (0.27, 0.32, 0.4)), (16.0, (0.55, 0.5, 0.45)),
]


def exterior_plaza_1(az, el):
    if el < 0.0:
        across, along = ground_point(az, el, 1.6)
        joint = abs(across) % 2.0 < 0.08 or abs(along) % 2.0 < 0.08
        return (0.2, 0.19, 0.17) if joint else (0.32, 0.3, 0.27)  # paving
    height, facade = BUILDINGS[int((az + 180.0) // 20.0) % len(BUILDINGS)]
    if facade is not None and el < height:
        lit = 1.0 + 0.25 * math.sin(az * 9.0 * DEG)  # rows of windows catch the light
        return scale(facade, lit if int(el // 3.0) % 2 == 0 else 0.7)
    c = sky(el, (0.25, 0.4, 0.85), (0.75, 0.8, 0.88))
    return add(c, disc_light(az, el, 120.0, 55.0, 2.5, (450.0, 430.0, 400.0), 0.002, 8.0))


def neo_pure_white(az, el):
    if el < 0.0:
        return grey(0.9)
    return grey(1.0 + 2.0 * max(0.0, (el - 40.0) / 50.0))  # a soft dome of light overhead


AMBIENCES = [
    ("studio_pure_white_2K", studio_pure_white),
    ("studio_white_mirror_2K", studio_white_mirror),
    ("studio_white_review_2K", studio_white_review),
    ("studio_panel_2_4K", studio_panel_2),
    ("studio_dark_review_2K", studio_dark_review),
    ("studio_white_design_2K", studio_white_design),
    ("studio_blue_design_2K", studio_blue_design),
    ("studio_dark_design_2K", studio_dark_design),
    ("outdoor", outdoor),
    ("studio_spot_1_2K", studio_spot_1),
    ("interior_hall_3_a_4K", interior_hall_3_a),
    ("exterior_road_2_2K", exterior_road_2),
    ("exterior_plaza_1_4K", exterior_plaza_1),
    ("neo_pure_white_2K", neo_pure_white),
]


# ---------------------------------------------------------------------------
# Radiance RGBE.


def render(environment):
    """The image as rows of linear RGB pixels, top row first."""
    rows = []
    n = SUPERSAMPLING
    for y in range(HDR_HEIGHT):
        row = []
        for x in range(HDR_WIDTH):
            total = (0.0, 0.0, 0.0)
            for sy in range(n):
                el = 90.0 - 180.0 * (y + (sy + 0.5) / n) / HDR_HEIGHT
                for sx in range(n):
                    az = -180.0 + 360.0 * (x + (sx + 0.5) / n) / HDR_WIDTH
                    total = add(total, environment(az, el))
            row.append(scale(total, 1.0 / (n * n)))
        rows.append(row)
    return rows


def rgbe(color):
    r, g, b = (max(c, 0.0) for c in color)
    v = max(r, g, b)
    if v < 1e-32:
        return (0, 0, 0, 0)
    mantissa, exponent = math.frexp(v)
    k = mantissa * 256.0 / v
    return (int(r * k), int(g * k), int(b * k), exponent + 128)


def rle_channel(data):
    """One channel of a scanline: runs (128 + count, value) of up to 127 equal bytes,
    literals (count, bytes...) of up to 128 bytes."""
    out = bytearray()
    i, n = 0, len(data)

    def run_at(j):
        k = 1
        while j + k < n and k < 127 and data[j + k] == data[j]:
            k += 1
        return k

    while i < n:
        run = run_at(i)
        if run >= 3:
            out += bytes((128 + run, data[i]))
            i += run
            continue
        start = i
        while i < n and i - start < 128 and run_at(i) < 3:
            i += 1
        out.append(i - start)
        out += bytes(data[start:i])
    return bytes(out)


def hdr_bytes(rows):
    width, height = len(rows[0]), len(rows)
    out = bytearray(b"#?RADIANCE\n")
    out += b"# QAVRbaUI environment image made by resources/generate.py\n"
    out += b"FORMAT=32-bit_rle_rgbe\n\n"
    out += b"-Y %d +X %d\n" % (height, width)
    for row in rows:
        pixels = [rgbe(c) for c in row]
        out += bytes((2, 2, width >> 8, width & 0xFF))
        for channel in range(4):
            out += rle_channel(bytes(p[channel] for p in pixels))
    return bytes(out)


# ---------------------------------------------------------------------------
# PNG thumbnail.


def png_chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def rgb_png_bytes(size, raw):
    """A square 8-bit RGB PNG of the filtered rows in raw."""
    return (b"\x89PNG\r\n\x1a\n"
            + png_chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 2, 0, 0, 0))
            + png_chunk(b"IDAT", zlib.compress(bytes(raw), 9))
            + png_chunk(b"IEND", b""))


def srgb8(linear):
    v = min(max(linear, 0.0), 1.0)
    v = v * 12.92 if v <= 0.0031308 else 1.055 * v ** (1.0 / 2.4) - 0.055
    return int(round(v * 255.0))


def thumbnail_bytes(size=64):
    raw = bytearray()
    horizon = 0.62 * size
    for y in range(size):
        raw.append(0)  # filter: none
        for x in range(size):
            u = (x + 0.5) / size - 0.5
            if y + 0.5 < horizon:  # the backdrop, lighter towards the top
                v = 0.55 + 0.35 * (1.0 - (y + 0.5) / horizon)
            else:  # the floor, with the soft glow of the light falling on it
                t = (y + 0.5 - horizon) / (size - horizon)
                v = 0.5 - 0.15 * t + 0.2 * math.exp(-(u * u) / 0.05 - (t - 0.3) ** 2 / 0.05)
            v *= 1.0 - 0.35 * u * u  # vignetting towards the sides
            raw += bytes((srgb8(v * 0.98), srgb8(v), srgb8(v * 1.03)))
    return rgb_png_bytes(size, raw)


# ---------------------------------------------------------------------------
# DDS bokeh textures.

BOKEH_SIZE = 128
BOKEH_RADIUS = 60.0

BOKEH = [  # (file name, inner edge A %, outer edge B %); Circle_E has A = B = E
    ("Circle_5.dds", 5, 5),
    ("Circle_5_10_progressive.dds", 5, 10),
    ("Circle_5_15_progressive.dds", 5, 15),
    ("Circle_5_20_progressive.dds", 5, 20),
    ("Circle_10_20_progressive.dds", 10, 20),
    ("Circle_10_25_progressive.dds", 10, 25),
    ("Circle_15_25_progressive.dds", 15, 25),
    ("Circle_20_30_progressive.dds", 20, 30),
    ("Circle_25_40_progressive.dds", 25, 40),
    ("Circle_35_50_progressive.dds", 35, 50),
    ("Circle_45_60_progressive.dds", 45, 60),
    ("Circle_60_80_progressive.dds", 60, 80),
    ("Circle_80_100_progressive.dds", 80, 100),
]


def bokeh_intensity(r, a, b):
    """The documented profile at the distance r (pixels) from the centre."""
    radius = BOKEH_RADIUS
    full = (1.0 - b / 100.0) * radius
    if r <= full:
        return 1.0
    if r >= radius:
        return 0.0
    if a == b:  # Circle_E: one ramp
        return (radius - r) / (radius - full)
    knee = (1.0 - a / 100.0) * radius
    if r <= knee:
        return 1.0 - 0.5 * (r - full) / (knee - full)
    return 0.5 * (radius - r) / (radius - knee)


DDSD_CAPS, DDSD_HEIGHT, DDSD_WIDTH, DDSD_PITCH, DDSD_PIXELFORMAT = 0x1, 0x2, 0x4, 0x8, 0x1000
DDPF_LUMINANCE = 0x20000
DDSCAPS_TEXTURE = 0x1000


def dds_bytes(a, b):
    size = BOKEH_SIZE
    center = size / 2.0
    pixels = bytearray()
    for y in range(size):
        for x in range(size):
            r = math.hypot(x + 0.5 - center, y + 0.5 - center)
            pixels.append(int(round(255.0 * bokeh_intensity(r, a, b))))
    pixel_format = struct.pack("<8I", 32, DDPF_LUMINANCE, 0, 8, 0xFF, 0, 0, 0)
    header = struct.pack(
        "<7I11I", 124, DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PITCH | DDSD_PIXELFORMAT,
        size, size, size, 0, 0, *([0] * 11))
    header += pixel_format + struct.pack("<5I", DDSCAPS_TEXTURE, 0, 0, 0, 0)
    assert len(header) == 124
    return b"DDS " + header + bytes(pixels)


# ---------------------------------------------------------------------------
# The live HUD's message catalog.

HUD_CATALOG = """\
# Messages of the live rendering heads-up display, shown over the 3D view.
# {1}, {2}: the message's parameters, in order.
InfosRendering = Rendering information
RenderingInProgress = Rendering in progress...
Resolution = Resolution: {1} x {2}
Ambience = Ambience: {1}
Backplate = Backplate: {1}
Resources = Resources: {1}
Render = Frames rendered: {1}
Total = Total: {1}
Infos = Rendering paused
"""


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(data)
    print("wrote %s (%d bytes)" % (os.path.relpath(path, HERE), len(data)))


def main():
    write(os.path.join(AMBIENCE_DIR, "Ambience_default_HQ.png"), thumbnail_bytes())
    for name, environment in AMBIENCES:
        write(os.path.join(AMBIENCE_DIR, name + ".hdr"), hdr_bytes(render(environment)))
    for name, a, b in BOKEH:
        write(os.path.join(DOF_DIR, name), dds_bytes(a, b))
    write(os.path.join(CATALOG_DIR, "QAVRbaLiveHUDDlg.catalog"), HUD_CATALOG.encode("utf-8"))


if __name__ == "__main__":
    main()
