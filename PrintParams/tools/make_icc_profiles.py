#!/usr/bin/env python3
"""Writes the small ICC profiles that ship with the sample drivers.

    PrintParams/tools/make_icc_profiles.py [samples folder]

The profiles are deterministic (fixed creation date, no profile id), so
running the script again reproduces the committed files byte for byte.

- RGB input profiles: matrix/TRC display profiles (one ICC v4, one v2).
- CMYK input and device ("OUTPUT") profiles: ICC v2 output profiles with
  8-bit lookup tables (A2B0, B2A0, gamt) on a 2-point grid, Lab PCS. The
  colour model behind them is a plain subtractive one: enough for a colour
  management module to load and run them, not a measured characterisation.
"""

import os
import struct
import sys

D50 = (0.9642, 1.0, 0.8249)
CREATED = (2024, 5, 1, 9, 0, 0)


def s15f16(value):
    return struct.pack(">i", int(round(value * 65536.0)))


def pad4(data):
    return data + b"\0" * (-len(data) % 4)


def xyz_type(xyz):
    return b"XYZ \0\0\0\0" + b"".join(s15f16(v) for v in xyz)


def curv_gamma(gamma):
    return b"curv\0\0\0\0" + struct.pack(">IH", 1, int(round(gamma * 256))) + b"\0\0"


def sf32(matrix):
    return b"sf32\0\0\0\0" + b"".join(s15f16(v) for v in matrix)


def mluc(text):
    encoded = text.encode("utf-16-be")
    return b"mluc\0\0\0\0" + struct.pack(">II", 1, 12) + b"enUS" + struct.pack(">II", len(encoded), 28) + encoded


def desc_v2(text):
    ascii_text = text.encode("ascii") + b"\0"
    return (b"desc\0\0\0\0" + struct.pack(">I", len(ascii_text)) + ascii_text +
            struct.pack(">II", 0, 0) + struct.pack(">HB", 0, 0) + b"\0" * 67)


def text_v2(text):
    return b"text\0\0\0\0" + text.encode("ascii") + b"\0"


def lut8(inputs, outputs, grid, function):
    """lut8Type with identity curves; function maps input fractions to output bytes."""
    data = b"mft1\0\0\0\0" + struct.pack(">BBBB", inputs, outputs, grid, 0)
    data += b"".join(s15f16(v) for v in (1, 0, 0, 0, 1, 0, 0, 0, 1))
    identity = bytes(range(256))
    data += identity * inputs
    clut = bytearray()
    for index in range(grid ** inputs):
        point = []
        rest = index
        for _ in range(inputs):
            point.insert(0, (rest % grid) / (grid - 1))
            rest //= grid
        clut += bytes(max(0, min(255, int(round(v)))) for v in function(point))
    data += bytes(clut)
    data += identity * outputs
    return data


def lab_bytes(lab):
    l, a, b = lab
    return (l * 255.0 / 100.0, a + 128.0, b + 128.0)


def cmyk_to_lab(cmyk, tint):
    c, m, y, k = cmyk
    # Each ink absorbs its complementary light; black darkens everything.
    r = (1 - c * 0.95) * (1 - m * 0.10) * (1 - y * 0.02)
    g = (1 - c * 0.30) * (1 - m * 0.92) * (1 - y * 0.08)
    bl = (1 - c * 0.05) * (1 - m * 0.25) * (1 - y * 0.94)
    dark = 1 - k * 0.9
    r, g, bl = r * dark, g * dark, bl * dark
    lightness = 100.0 * (0.30 * r + 0.59 * g + 0.11 * bl) ** (1 / 2.2) * tint
    return (lightness, 90.0 * (r - g) * 0.6, 90.0 * (g - bl) * 0.6)


def lab_to_cmyk(lab):
    l, a, b = lab
    darkness = 1 - l
    c = max(0.0, min(1.0, darkness - a * 0.3))
    m = max(0.0, min(1.0, darkness + a * 0.3))
    y = max(0.0, min(1.0, darkness + b * 0.3))
    k = max(0.0, min(1.0, darkness - 0.5)) * 2
    return tuple(v * 255 for v in (c, m, y, k))


def header(size, version, device_class, space, pcs):
    year, month, day, hour, minute, second = CREATED
    data = struct.pack(">I", size) + b"\0\0\0\0" + struct.pack(">I", version)
    data += device_class + space + pcs
    data += struct.pack(">6H", year, month, day, hour, minute, second)
    data += b"acsp" + b"\0\0\0\0" + struct.pack(">I", 0) + b"\0\0\0\0" * 2 + b"\0" * 8
    data += struct.pack(">I", 0) + b"".join(s15f16(v) for v in D50) + b"BEX "
    data += b"\0" * 16 + b"\0" * 28
    assert len(data) == 128
    return data


def profile(version, device_class, space, pcs, tags):
    """tags: list of (signature, data); equal data is stored once and shared."""
    table_size = 4 + 12 * len(tags)
    offset = 128 + table_size
    blobs = []
    placed = {}
    entries = []
    for signature, data in tags:
        if data not in placed:
            placed[data] = offset
            blobs.append(pad4(data))
            offset += len(pad4(data))
        entries.append((signature, placed[data], len(data)))
    body = struct.pack(">I", len(tags))
    for signature, where, size in entries:
        body += signature + struct.pack(">II", where, size)
    body += b"".join(blobs)
    return header(128 + len(body), version, device_class, space, pcs) + body


def rgb_profile(name, version, primaries, gamma):
    tags = []
    if version >= 0x04000000:
        tags.append((b"desc", mluc(name)))
        tags.append((b"cprt", mluc("No copyright, use freely")))
        tags.append((b"chad", sf32((1, 0, 0, 0, 1, 0, 0, 0, 1))))
    else:
        tags.append((b"desc", desc_v2(name)))
        tags.append((b"cprt", text_v2("No copyright, use freely")))
    tags.append((b"wtpt", xyz_type(D50)))
    for signature, xyz in zip((b"rXYZ", b"gXYZ", b"bXYZ"), primaries):
        tags.append((signature, xyz_type(xyz)))
    curve = curv_gamma(gamma)
    for signature in (b"rTRC", b"gTRC", b"bTRC"):
        tags.append((signature, curve))
    return profile(version, b"mntr", b"RGB ", b"XYZ ", tags)


def cmyk_profile(name, tint):
    def a2b(point):
        return lab_bytes(cmyk_to_lab(point, tint))

    def b2a(point):
        l, a, b = point
        return lab_to_cmyk((l, a * 2 - 1, b * 2 - 1))

    tags = [
        (b"desc", desc_v2(name)),
        (b"cprt", text_v2("No copyright, use freely")),
        (b"wtpt", xyz_type(D50)),
        (b"A2B0", lut8(4, 3, 2, a2b)),
        (b"B2A0", lut8(3, 4, 2, b2a)),
        (b"gamt", lut8(3, 1, 2, lambda point: (0,))),
    ]
    return profile(0x02100000, b"prtr", b"CMYK", b"Lab ", tags)


SRGB_D50 = ((0.4361, 0.2225, 0.0139), (0.3851, 0.7169, 0.0971), (0.1431, 0.0606, 0.7141))
ADOBE_D50 = ((0.6097, 0.3111, 0.0195), (0.2053, 0.6257, 0.0609), (0.1492, 0.0632, 0.7446))

PROFILES = {
    "RGB/Bex sRGB v4.icc": lambda: rgb_profile("Bex sRGB v4", 0x04300000, SRGB_D50, 2.2),
    "RGB/Bex Wide RGB v2.icc": lambda: rgb_profile("Bex Wide RGB v2", 0x02100000, ADOBE_D50, 2.2),
    "CMYK/Bex Coated CMYK.icc": lambda: cmyk_profile("Bex Coated CMYK", 1.0),
    "CMYK/Bex Uncoated CMYK.icc": lambda: cmyk_profile("Bex Uncoated CMYK", 0.96),
    "OUTPUT/BexUV2513_Acrylic_720x900.icc": lambda: cmyk_profile("BexUV2513 Acrylic 720x900", 0.98),
    "OUTPUT/BexUV2513_Glass_720x900.icc": lambda: cmyk_profile("BexUV2513 Glass 720x900", 0.99),
    "OUTPUT/BexUV2513_Metal_1440x1200.icc": lambda: cmyk_profile("BexUV2513 Metal 1440x1200", 0.94),
    "OUTPUT/BexUV1610_PVC_720x1200.icc": lambda: cmyk_profile("BexUV1610 PVC 720x1200", 0.97),
    "OUTPUT/BexUV1610_Leather_1440x1440.icc": lambda: cmyk_profile("BexUV1610 Leather 1440x1440", 0.92),
    "OUTPUT/BexUV3220_Wood_600x900.icc": lambda: cmyk_profile("BexUV3220 Wood 600x900", 0.9),
    "OUTPUT/BexUV3220_Ceramic_1200x1200.icc": lambda: cmyk_profile("BexUV3220 Ceramic 1200x1200", 0.97),
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    samples = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "samples")
    root = os.path.join(samples, "bin", "ICC Profile")
    for relative, make in sorted(PROFILES.items()):
        path = os.path.join(root, relative)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as out:
            out.write(make())
        print(path)


if __name__ == "__main__":
    main()
