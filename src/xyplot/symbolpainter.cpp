#include "symbolpainter.h"

#include "rounding.h"
#include <QPainter>

namespace {

/// Keeps a coordinate where sums with a radius fit an int.
int withinPixels(int coordinate)
{
    return qBound(-pixelLimit, coordinate, pixelLimit);
}

struct Corner // in radii from the centre
{
    int x;
    int y;
};

struct Side // with the end at which its dashes start
{
    Corner from;
    Corner to;
};

template<int count>
void strokeSides(QPainter& painter, QPoint centre, int radius, Side const (&sides)[count])
{
    QLine lines[count];
    auto const place = [&](Corner corner) {
        return QPoint(centre.x() + corner.x * radius, centre.y() + corner.y * radius);
    };
    for (int i = 0; i < count; ++i)
        lines[i] = QLine(place(sides[i].from), place(sides[i].to));
    painter.drawLines(lines, count);
}

constexpr Side triangleDown[] = {{{-1, -1}, {1, -1}}, {{-1, -1}, {0, 1}}, {{1, -1}, {0, 1}}};
constexpr Side triangleUp[] = {{{-1, 1}, {1, 1}}, {{-1, 1}, {0, -1}}, {{1, 1}, {0, -1}}};
constexpr Side triangleLeft[] = {{{1, 1}, {1, -1}}, {{1, 1}, {-1, 0}}, {{1, -1}, {-1, 0}}};
constexpr Side triangleRight[] = {{{-1, 1}, {-1, -1}}, {{-1, 1}, {1, 0}}, {{-1, -1}, {1, 0}}};
constexpr Side diamond[]
    = {{{-1, 0}, {0, 1}}, {{0, 1}, {1, 0}}, {{1, 0}, {0, -1}}, {{0, -1}, {-1, 0}}};

} // namespace

void paintSymbol(QPainter& painter, QPoint centre, E_SYMBOL symbol, int radius)
{
    int const x = withinPixels(centre.x());
    int const y = withinPixels(centre.y());
    int const r = withinPixels(radius);
    centre = QPoint(x, y);
    switch (static_cast<int>(symbol)) {
    case SYMBOL_DOT:
        painter.drawRect(QRect(centre, QPoint(x + r - 1, y + r - 1)));
        break;
    case SYMBOL_PLUS:
        painter.drawLine(x - r, y, x + r, y);
        painter.drawLine(x, y - r, x, y + r);
        break;
    case SYMBOL_CROSS:
        painter.drawLine(x - r, y - r, x + r, y + r);
        painter.drawLine(x + r, y - r, x - r, y + r);
        break;
    case SYMBOL_SQUARE:
        painter.drawRect(x - r, y - r, 2 * r, 2 * r);
        break;
    case SYMBOL_TRIANGLE_DOWN:
        strokeSides(painter, centre, r, triangleDown);
        break;
    case SYMBOL_TRIANGLE_UP:
        strokeSides(painter, centre, r, triangleUp);
        break;
    case SYMBOL_TRIANGLE_LEFT:
        strokeSides(painter, centre, r, triangleLeft);
        break;
    case SYMBOL_TRIANGLE_RIGHT:
        strokeSides(painter, centre, r, triangleRight);
        break;
    case SYMBOL_CIRCLE:
        painter.drawEllipse(x - r, y - r, 2 * r, 2 * r);
        break;
    case SYMBOL_DIAMOND:
        strokeSides(painter, centre, r, diamond);
        break;
    default:
        break;
    }
}
