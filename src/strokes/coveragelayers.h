#pragma once

#include <QImage>
#include <functional>
#include <vector>

/// Paints a small antialiased drawing with an opaque pen on a background, always in one size.
using SamplePainting = std::function<QImage(QColor const& background, QColor const& pen)>;

/**
 * What a drawing covers of each pixel, as the alpha of images to be put one over the other.
 *
 * Where a drawing crosses itself the painter blends a pixel twice, and rounds twice; that cannot be
 * told from the result alone, but from results over many backgrounds.
 *
 * @return one layer or two; none if the painter does otherwise than blend twice
 */
std::vector<QImage> coverageLayers(SamplePainting const& paint);
