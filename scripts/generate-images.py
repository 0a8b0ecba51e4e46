#!/usr/bin/env python3
"""Draws the frameless framework's images into resources/img/.

The PNG files are committed; the build never runs this script. Run it again
after changing a drawing:  scripts/generate-images.py

Every image is drawn from a few geometric shapes (signed distances, 4 x 4
supersampling) and written as an 8-bit RGBA PNG with the standard library
only, so the output is the same on every machine.
"""

import math
import os
import struct
import zlib

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources", "img")
SAMPLES = 4


# --- shapes: each is a function (x, y) -> signed distance, negative inside ---

def circle(cx, cy, r):
    return lambda x, y: math.hypot(x - cx, y - cy) - r


def segment(ax, ay, bx, by, width):
    """A stroke from a to b with round caps."""
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy

    def dist(x, y):
        t = 0.0 if length2 == 0 else max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / length2))
        return math.hypot(x - (ax + t * dx), y - (ay + t * dy)) - width / 2

    return dist


def box(x0, y0, x1, y1):
    """A filled axis-aligned rectangle."""
    cx, cy, hx, hy = (x0 + x1) / 2, (y0 + y1) / 2, (x1 - x0) / 2, (y1 - y0) / 2

    def dist(x, y):
        qx, qy = abs(x - cx) - hx, abs(y - cy) - hy
        outside = math.hypot(max(qx, 0.0), max(qy, 0.0))
        return outside + min(max(qx, qy), 0.0)

    return dist


def outline(shape, width):
    """The outline of a shape, width pixels wide, centred on its edge."""
    return lambda x, y: abs(shape(x, y)) - width / 2


def union(*shapes):
    return lambda x, y: min(s(x, y) for s in shapes)


def subtract(shape, cut):
    return lambda x, y: max(shape(x, y), -cut(x, y))


def polygon(points):
    """A filled convex polygon, points clockwise on screen (y pointing down)."""
    edges = []
    for i, (ax, ay) in enumerate(points):
        bx, by = points[(i + 1) % len(points)]
        nx, ny = by - ay, -(bx - ax)
        n = math.hypot(nx, ny)
        edges.append((ax, ay, nx / n, ny / n))
    return lambda x, y: max((x - ax) * nx + (y - ay) * ny for ax, ay, nx, ny in edges)


def arc(cx, cy, r, start_deg, end_deg, width):
    """A stroked circular arc from start to end (degrees, clockwise on screen), round caps."""
    a0, a1 = math.radians(start_deg), math.radians(end_deg)
    p0 = (cx + r * math.cos(a0), cy + r * math.sin(a0))
    p1 = (cx + r * math.cos(a1), cy + r * math.sin(a1))

    def dist(x, y):
        angle = math.atan2(y - cy, x - cx)
        span = (a1 - a0) % (2 * math.pi)
        if (angle - a0) % (2 * math.pi) <= span:
            return abs(math.hypot(x - cx, y - cy) - r) - width / 2
        return min(math.hypot(x - p0[0], y - p0[1]), math.hypot(x - p1[0], y - p1[1])) - width / 2

    return dist


# --- canvas ---

class Canvas:
    def __init__(self, width, height):
        self.width, self.height = width, height
        # premultiplied RGBA, 0..1
        self.pixels = [[0.0, 0.0, 0.0, 0.0] for _ in range(width * height)]

    def fill(self, shape, rgba):
        r, g, b, a = (c / 255.0 for c in rgba)
        step = 1.0 / SAMPLES
        for py in range(self.height):
            for px in range(self.width):
                covered = 0
                for sy in range(SAMPLES):
                    for sx in range(SAMPLES):
                        if shape(px + (sx + 0.5) * step, py + (sy + 0.5) * step) <= 0:
                            covered += 1
                if covered:
                    self.blend(px, py, r, g, b, a * covered / (SAMPLES * SAMPLES))

    def blend(self, px, py, r, g, b, a):
        dst = self.pixels[py * self.width + px]
        keep = 1.0 - a
        dst[0] = r * a + dst[0] * keep
        dst[1] = g * a + dst[1] * keep
        dst[2] = b * a + dst[2] * keep
        dst[3] = a + dst[3] * keep

    def set_alpha_map(self, rgb, alpha):
        """Fills every pixel with one colour and the alpha alpha(px, py)."""
        r, g, b = (c / 255.0 for c in rgb)
        for py in range(self.height):
            for px in range(self.width):
                a = alpha(px + 0.5, py + 0.5)
                self.pixels[py * self.width + px] = [r * a, g * a, b * a, a]

    def png(self):
        rows = bytearray()
        for py in range(self.height):
            rows.append(0)  # filter: none
            for px in range(self.width):
                r, g, b, a = self.pixels[py * self.width + px]
                if a > 0:
                    r, g, b = r / a, g / a, b / a
                rows.extend(round(max(0.0, min(1.0, c)) * 255) for c in (r, g, b, a))

        def chunk(kind, data):
            body = kind + data
            return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 6, 0, 0, 0)
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def save(relative, canvas):
    path = os.path.join(ROOT, relative)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as out:
        out.write(canvas.png())
    print("wrote", os.path.normpath(path))


# --- title bar buttons: 26 x 26, light strokes on a transparent ground ---

WHITE = (255, 255, 255, 255)
STROKE = 1.6


def title_bar_icon(shape, rgba=WHITE):
    canvas = Canvas(26, 26)
    canvas.fill(shape, rgba)
    return canvas


def cross(size, centre, width):
    h = size / 2
    return union(segment(centre - h, centre - h, centre + h, centre + h, width),
                 segment(centre - h, centre + h, centre + h, centre - h, width))


def title_bar_images():
    save("titleBar/close_normal.png", title_bar_icon(cross(10, 13, STROKE)))
    save("titleBar/close_hover.png", title_bar_icon(cross(10, 13, STROKE + 0.4)))
    save("titleBar/close_disabled.png", title_bar_icon(cross(10, 13, STROKE), (200, 200, 200, 140)))
    save("titleBar/maximize.png", title_bar_icon(outline(box(8.5, 8.5, 17.5, 17.5), STROKE - 0.4)))
    back = outline(box(10.5, 7.5, 18.5, 15.5), STROKE - 0.4)
    front = box(7.5, 10.5, 15.5, 18.5)
    save("titleBar/restore.png",
         title_bar_icon(union(subtract(back, box(6.5, 9.5, 16.5, 19.5)), outline(front, STROKE - 0.4))))
    save("titleBar/minimize.png", title_bar_icon(segment(8, 13.5, 18, 13.5, STROKE)))
    save("titleBar/menu.png", title_bar_icon(union(segment(8, 9, 18, 9, STROKE),
                                                   segment(8, 13, 18, 13, STROKE),
                                                   segment(8, 17, 18, 17, STROKE))))


# --- window shadow: 34 x 160, a soft dark edge fading outwards on both sides ---

def shadow_image():
    canvas = Canvas(34, 160)
    inner = box(12, 12, 22, 148)

    def alpha(x, y):
        d = inner(x, y)
        if d <= 0:
            return 0.0
        return 0.35 * math.exp(-(d * d) / (2 * 4.0 * 4.0))

    canvas.set_alpha_map((0, 0, 0), alpha)
    save("background/shadow.png", canvas)


# --- message box icons: 48 x 48, a coloured badge with a white sign ---

def badge(colour, sign):
    canvas = Canvas(48, 48)
    canvas.fill(circle(24, 24, 21), colour)
    canvas.fill(sign, WHITE)
    return canvas


def message_box_images():
    triangle = polygon([(24, 4), (45, 42), (3, 42)])
    warning = Canvas(48, 48)
    warning.fill(triangle, (245, 166, 35, 255))
    warning.fill(union(segment(24, 17, 24, 30, 4.2), circle(24, 36, 2.4)), WHITE)
    save("messageBox/warning.png", warning)

    question_sign = union(arc(24, 18.5, 6.5, 180, 90, 4), segment(24, 25, 24, 28.5, 4), circle(24, 35.5, 2.4))
    save("messageBox/question.png", badge((41, 121, 255, 255), question_sign))

    info_sign = union(circle(24, 14, 2.6), segment(24, 21, 24, 35, 4.4))
    save("messageBox/info.png", badge((0, 150, 200, 255), info_sign))

    save("messageBox/error.png", badge((224, 52, 52, 255), cross(16, 24, 4.4)))

    check = union(segment(14, 24.5, 21, 31.5, 4.4), segment(21, 31.5, 34, 17, 4.4))
    save("messageBox/success.png", badge((46, 170, 90, 255), check))


if __name__ == "__main__":
    title_bar_images()
    shadow_image()
    message_box_images()
