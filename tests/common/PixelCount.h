#pragma once

// Counting the pixels of a colour in a grabbed picture: how the widget tests
// check what was painted.

#include <QColor>
#include <QImage>
#include <QRect>

namespace PixelCount {

// Number of pixels of exactly the given colour inside rect.
inline int countPixels(const QImage &image, const QRect &rect, const QColor &color)
{
    const QRect area = rect.intersected(image.rect());
    const QRgb wanted = color.rgba();
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) == wanted)
                ++count;
        }
    }
    return count;
}

// Number of pixels inside rect whose red, green and blue each lie within
// tolerance of the given colour's. Text is drawn anti-aliased, and how many of
// its pixels get the exact text colour depends on the platform's rasteriser.
inline int countPixelsNear(const QImage &image, const QRect &rect, const QColor &color, int tolerance)
{
    const QRect area = rect.intersected(image.rect());
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAbs(qRed(pixel) - color.red()) <= tolerance &&
                qAbs(qGreen(pixel) - color.green()) <= tolerance &&
                qAbs(qBlue(pixel) - color.blue()) <= tolerance)
                ++count;
        }
    }
    return count;
}

} // namespace PixelCount
