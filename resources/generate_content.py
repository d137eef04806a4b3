#!/usr/bin/env python3
"""Writes the content installation sample that the content importer lists and imports.

Run it from anywhere (Python 3, standard library only):

    python3 resources/generate_content.py

It (re)writes, next to itself, with the same bytes on every run:

  content/startup/<folder>/<Base>_V0<v>.orlix
      the packaged content files of the presets of msgcatalog/
      QAVRbaMaterialCatalogImporterCmd.catalog, for each kind's folder ("materials",
      "ambiences", "humans", "props"); a preset may have several versions, the importer
      takes the newest. Frosted glass has none: its tile is shown unavailable. The
      advanced material's preset is of type "ORLIX": listed, but not imported.
  content/resources/graphic/<Icon>.png
      the presets' thumbnails: 64x64 8-bit RGB swatches.
  startup/materials/Sample_Materials.orlix
      the sample materials, found along the start-up path.
  graphic/importer/<name>.png
      the importer's own images: the panel icon of each kind, the kinds' default
      thumbnails and the teaser of the preset whose content is missing.

A package is a zip archive holding "manifest.json" (format "orlix", version 1, the kind,
a title and the objects, see QAVContentPackage.h) and one small parameter file per
object ("<id>/parameters.json"). Entries carry a fixed date so that the bytes do not
change from run to run.
"""

import io
import json
import os
import zipfile

from generate import HERE, rgb_png_bytes, write

# (kind, folder, base name, versions, title, objects: (id, type, name, colour))
PACKAGES = [
    ("Material", "materials", "BrushedAluminium", [1, 3], "Brushed aluminium",
     [("alu-brushed", "MPM_anisotropic_metal", "Brushed aluminium", (0.72, 0.74, 0.77)),
      ("alu-brushed-dark", "MPM_anisotropic_metal", "Dark brushed aluminium", (0.35, 0.36, 0.38))]),
    ("Material", "materials", "WalnutVeneer", [2], "Walnut veneer",
     [("walnut-satin", "MPM_soft_plastic", "Satin walnut", (0.36, 0.22, 0.12))]),
    ("Material", "materials", "AdvancedMaterial", [1], "Advanced material",
     [("advanced-material", "MPM_material", "Advanced material", (0.30, 0.50, 0.75))]),
    ("Ambience", "ambiences", "Sample_Ambience", [1], "Sample ambience",
     [("studio-neutral", "Ambience", "Neutral studio", (0.80, 0.80, 0.80))]),
    ("Ambience", "ambiences", "SunsetTerrace", [1, 2], "Sunset terrace",
     [("sunset-terrace", "Ambience", "Sunset terrace", (0.95, 0.60, 0.32))]),
    ("Ambience", "ambiences", "NightStreet", [1], "Night street",
     [("night-street", "Ambience", "Night street", (0.10, 0.12, 0.22))]),
    ("Human", "humans", "Sample_Human", [1], "Sample human",
     [("standing-figure", "Human", "Standing figure", (0.55, 0.45, 0.40))]),
    ("Human", "humans", "SeatedFigure", [1], "Seated figure",
     [("seated-figure", "Human", "Seated figure", (0.50, 0.42, 0.38))]),
    ("Props", "props", "Sample_Props", [1], "Sample accessories",
     [("vase", "Props", "Vase", (0.20, 0.45, 0.60)), ("book", "Props", "Book", (0.60, 0.15, 0.15)),
      ("lamp", "Props", "Table lamp", (0.90, 0.85, 0.60))]),
    ("Props", "props", "Armchair", [2], "Armchair",
     [("armchair-leather", "Props", "Leather armchair", (0.40, 0.20, 0.10))]),
]

SAMPLE_MATERIALS = ("Material", "Sample materials",
                    [("sample-red-paint", "MPM_car_paint", "Red paint", (0.70, 0.05, 0.05)),
                     ("sample-clear-glass", "MPM_clear_glass", "Clear glass", (0.90, 0.95, 0.95)),
                     ("sample-polished-steel", "MPM_polished_metal", "Polished steel",
                      (0.60, 0.60, 0.62))])

# Thumbnails of the presets (the icons the catalog names).
THUMBNAILS = {
    "BrushedAluminium.png": (0.72, 0.74, 0.77),
    "WalnutVeneer.png": (0.36, 0.22, 0.12),
    "AdvancedMaterial.png": (0.30, 0.50, 0.75),
    "FrostedGlass.png": (0.85, 0.90, 0.92),
    "SunsetTerrace.png": (0.95, 0.60, 0.32),
    "NightStreet.png": (0.10, 0.12, 0.22),
    "SeatedFigure.png": (0.50, 0.42, 0.38),
    "Armchair.png": (0.40, 0.20, 0.10),
}

# The importer's own images.
IMPORTER_IMAGES = {
    "QAVRbaImportMatCatalog.png": (0.20, 0.45, 0.80),
    "QAVRbaImportAmbience.png": (0.95, 0.70, 0.30),
    "QAVRbaImportHuman.png": (0.55, 0.40, 0.35),
    "QAVRbaImportProps.png": (0.35, 0.60, 0.40),
    "QAVRbaMaterialLibrary_Default_Thumbnail.png": (0.62, 0.64, 0.68),
    "QAVRbaAmbience_Default_Thumbnail.png": (0.80, 0.78, 0.70),
    "QAVRbaHuman_Default_Thumbnail.png": (0.70, 0.60, 0.55),
    "QAVRbaHuman_Default_Tumbnail.png": (0.70, 0.60, 0.55),
    "FrostedGlass_teaser.png": (0.78, 0.80, 0.82),
}

FIXED_DATE = (2026, 1, 1, 0, 0, 0)


def package_bytes(kind, title, objects):
    manifest = {"format": "orlix", "version": 1, "kind": kind, "title": title, "objects": []}
    files = []
    for oid, otype, name, colour in objects:
        path = oid + "/parameters.json"
        manifest["objects"].append({"id": oid, "type": otype, "name": name, "files": [path],
                                    "attributes": {"Source": "sample content"}})
        files.append((path, json.dumps({"type": otype, "colour": colour}, indent=1) + "\n"))
    return zipfile_bytes([("manifest.json", json.dumps(manifest, indent=1) + "\n")] + files)


def zipfile_bytes(entries):
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, text in entries:
            info = zipfile.ZipInfo(name, FIXED_DATE)
            info.compress_type = zipfile.ZIP_DEFLATED
            info.external_attr = 0o644 << 16
            archive.writestr(info, text.encode("utf-8"))
    return buffer.getvalue()


def swatch_bytes(colour, size=64):
    """A lit sphere of the colour on a light grey ground."""
    raw = bytearray()
    for y in range(size):
        raw.append(0)
        for x in range(size):
            u = (x + 0.5) / size * 2 - 1
            v = (y + 0.5) / size * 2 - 1
            r2 = u * u + v * v
            if r2 < 0.72:
                z = (0.72 - r2) ** 0.5 / 0.72 ** 0.5
                light = 0.25 + 0.75 * max(0.0, -0.45 * u - 0.55 * v + 0.7 * z)
                highlight = max(0.0, -0.45 * u - 0.55 * v + 0.7 * z) ** 24
                pixel = [min(1.0, c * light + 0.6 * highlight) for c in colour]
            else:
                pixel = [0.93 - 0.05 * (v + 1) / 2] * 3
            raw += bytes(int(round(255 * p)) for p in pixel)
    return rgb_png_bytes(size, raw)


def main():
    for kind, folder, base, versions, title, objects in PACKAGES:
        for version in versions:
            name = "%s_V0%d.orlix" % (base, version)
            write(os.path.join(HERE, "content", "startup", folder, name),
                  package_bytes(kind, "%s (version %d)" % (title, version), objects))
    kind, title, objects = SAMPLE_MATERIALS
    write(os.path.join(HERE, "startup", "materials", "Sample_Materials.orlix"),
          package_bytes(kind, title, objects))
    for name, colour in THUMBNAILS.items():
        write(os.path.join(HERE, "content", "resources", "graphic", name), swatch_bytes(colour))
    for name, colour in IMPORTER_IMAGES.items():
        write(os.path.join(HERE, "graphic", "importer", name), swatch_bytes(colour))


if __name__ == "__main__":
    main()
