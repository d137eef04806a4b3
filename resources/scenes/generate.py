#!/usr/bin/env python3
"""Writes the shipped showroom scene's mesh files, all made here:

  showroom/meshes/vase.obj      a lathed vase (OBJ, with normals)
  showroom/meshes/plinth.ply    an eight-sided plinth (ASCII PLY)
  showroom/meshes/bracket.stl   an L-shaped bracket (binary STL)
  showroom/meshes/sticker.gltf  a round sticker, a flat disc (glTF 2.0, embedded buffer)

Run from anywhere: python3 resources/scenes/generate.py. The output is the same
bytes on every run. Units are millimetres; z is up.
"""
import base64
import json
import math
import os
import struct

HERE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "showroom", "meshes")


def fmt(v):
    return ("%.5f" % v).rstrip("0").rstrip(".").replace("-0", "0") if abs(v) > 5e-6 else "0"


def normalise(v):
    length = math.sqrt(sum(c * c for c in v)) or 1.0
    return tuple(c / length for c in v)


def lathe(profile, segments):
    """Vertices, normals and triangles of a profile [(radius, z)] turned about z."""
    vertices, normals, triangles = [], [], []
    for i, (r, z) in enumerate(profile):
        # The profile's normal: perpendicular to its tangent, pointing out.
        a = profile[max(i - 1, 0)]
        b = profile[min(i + 1, len(profile) - 1)]
        dr, dz = b[0] - a[0], b[1] - a[1]
        nr, nz = normalise((dz, -dr))
        for j in range(segments + 1):
            phi = 2 * math.pi * j / segments
            vertices.append((r * math.cos(phi), r * math.sin(phi), z))
            normals.append((nr * math.cos(phi), nr * math.sin(phi), nz))
    row = segments + 1
    for i in range(len(profile) - 1):
        for j in range(segments):
            a = i * row + j
            b = a + row
            triangles += [(a, a + 1, b), (a + 1, b + 1, b)]
    return vertices, normals, triangles


def vase():
    profile = [(0.0, 0.0), (45.0, 0.0), (55.0, 20.0), (70.0, 80.0), (72.0, 120.0),
               (55.0, 190.0), (38.0, 230.0), (36.0, 260.0), (44.0, 290.0), (46.0, 300.0)]
    v, n, t = lathe(profile, 32)
    lines = ["# A vase turned about z, in millimetres.", "o Vase"]
    lines += ["v %s %s %s" % tuple(fmt(c) for c in p) for p in v]
    lines += ["vn %s %s %s" % tuple(fmt(c) for c in p) for p in n]
    lines += ["f %d//%d %d//%d %d//%d" % (a + 1, a + 1, b + 1, b + 1, c + 1, c + 1) for a, b, c in t]
    return "\n".join(lines) + "\n"


def plinth():
    sides, radius, height = 8, 160.0, 120.0
    vertices, triangles = [], []
    # Top and bottom centres, then the rim of each cap and of each side face
    # (flat shading: every face has its own vertices).
    def add(p, nrm):
        vertices.append((p, nrm))
        return len(vertices) - 1
    for z, nz in ((height, 1.0), (0.0, -1.0)):
        c = add((0.0, 0.0, z), (0.0, 0.0, nz))
        rim = [add((radius * math.cos(2 * math.pi * k / sides),
                    radius * math.sin(2 * math.pi * k / sides), z), (0.0, 0.0, nz))
               for k in range(sides)]
        for k in range(sides):
            a, b = rim[k], rim[(k + 1) % sides]
            triangles.append((c, a, b) if nz > 0 else (c, b, a))
    for k in range(sides):
        p0 = 2 * math.pi * k / sides
        p1 = 2 * math.pi * (k + 1) / sides
        nrm = normalise((math.cos((p0 + p1) / 2), math.sin((p0 + p1) / 2), 0.0))
        q = [add((radius * math.cos(p), radius * math.sin(p), z), nrm)
             for p, z in ((p0, 0.0), (p1, 0.0), (p1, height), (p0, height))]
        triangles += [(q[0], q[1], q[2]), (q[0], q[2], q[3])]
    lines = ["ply", "format ascii 1.0", "comment An eight-sided plinth, in millimetres",
             "element vertex %d" % len(vertices), "property float x", "property float y",
             "property float z", "property float nx", "property float ny", "property float nz",
             "element face %d" % len(triangles), "property list uchar int vertex_indices",
             "end_header"]
    lines += [" ".join(fmt(c) for c in p + nrm) for p, nrm in vertices]
    lines += ["3 %d %d %d" % t for t in triangles]
    return "\n".join(lines) + "\n"


def bracket():
    # An L profile in the x-z plane, extruded along y.
    profile = [(0, 0), (120, 0), (120, 12), (12, 12), (12, 100), (0, 100)]
    depth = 60.0
    facets = []

    def facet(a, b, c):
        u = [b[i] - a[i] for i in range(3)]
        w = [c[i] - a[i] for i in range(3)]
        nrm = normalise((u[1] * w[2] - u[2] * w[1], u[2] * w[0] - u[0] * w[2],
                         u[0] * w[1] - u[1] * w[0]))
        facets.append((nrm, a, b, c))

    # The two L faces as triangles (the L is split into two rectangles).
    rects = [((0, 0), (120, 12)), ((0, 12), (12, 100))]
    for y, front in ((0.0, True), (depth, False)):
        for (x0, z0), (x1, z1) in rects:
            a, b, c, d = (x0, y, z0), (x1, y, z0), (x1, y, z1), (x0, y, z1)
            if front:
                facet(a, b, c), facet(a, c, d)
            else:
                facet(a, c, b), facet(a, d, c)
    for k in range(len(profile)):
        (x0, z0), (x1, z1) = profile[k], profile[(k + 1) % len(profile)]
        a, b, c, d = (x0, 0.0, z0), (x1, 0.0, z1), (x1, depth, z1), (x0, depth, z0)
        facet(a, c, b), facet(a, d, c)
    header = b"An L bracket, millimetres, made by the project".ljust(80, b" ")
    body = struct.pack("<I", len(facets))
    for nrm, a, b, c in facets:
        body += struct.pack("<12fH", *nrm, *a, *b, *c, 0)
    return header + body


def sticker():
    segments, radius = 24, 40.0
    positions = [(0.0, 0.0, 0.0)] + [(radius * math.cos(2 * math.pi * k / segments),
                                      radius * math.sin(2 * math.pi * k / segments), 0.0)
                                     for k in range(segments)]
    indices = []
    for k in range(segments):
        indices += [0, 1 + k, 1 + (k + 1) % segments]
    pos = b"".join(struct.pack("<3f", *p) for p in positions)
    nrm = b"".join(struct.pack("<3f", 0.0, 0.0, 1.0) for _ in positions)
    idx = b"".join(struct.pack("<H", i) for i in indices)
    idx += b"\0" * (-len(idx) % 4)
    data = pos + nrm + idx
    gltf = {
        "asset": {"version": "2.0", "generator": "resources/scenes/generate.py"},
        "scene": 0,
        "scenes": [{"nodes": [0]}],
        "nodes": [{"mesh": 0, "name": "Sticker"}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 1}, "indices": 2}]}],
        "buffers": [{"byteLength": len(data),
                     "uri": "data:application/octet-stream;base64," +
                            base64.b64encode(data).decode("ascii")}],
        "bufferViews": [
            {"buffer": 0, "byteOffset": 0, "byteLength": len(pos), "target": 34962},
            {"buffer": 0, "byteOffset": len(pos), "byteLength": len(nrm), "target": 34962},
            {"buffer": 0, "byteOffset": len(pos) + len(nrm), "byteLength": len(indices) * 2,
             "target": 34963}],
        "accessors": [
            {"bufferView": 0, "componentType": 5126, "count": len(positions), "type": "VEC3",
             "min": [-radius, -radius, 0.0], "max": [radius, radius, 0.0]},
            {"bufferView": 1, "componentType": 5126, "count": len(positions), "type": "VEC3"},
            {"bufferView": 2, "componentType": 5123, "count": len(indices), "type": "SCALAR"}],
    }
    return json.dumps(gltf, indent=1) + "\n"


def main():
    os.makedirs(HERE, exist_ok=True)
    for name, content in (("vase.obj", vase()), ("plinth.ply", plinth()),
                          ("bracket.stl", bracket()), ("sticker.gltf", sticker())):
        mode = "wb" if isinstance(content, bytes) else "w"
        with open(os.path.join(HERE, name), mode, **({} if mode == "wb" else {"newline": "\n"})) as f:
            f.write(content)


if __name__ == "__main__":
    main()
