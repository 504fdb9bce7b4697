#include "symbolpainter.h"

#include "rounding.h"
#include <QLine>
#include <QPainter>

namespace {

constexpr SymbolLine plus[] = {{{-1, 0}, {1, 0}}, {{0, -1}, {0, 1}}};
constexpr SymbolLine cross[] = {{{-1, -1}, {1, 1}}, {{1, -1}, {-1, 1}}};
constexpr SymbolLine triangleDown[] = {{{-1, -1}, {1, -1}}, {{-1, -1}, {0, 1}}, {{1, -1}, {0, 1}}};
constexpr SymbolLine triangleUp[] = {{{-1, 1}, {1, 1}}, {{-1, 1}, {0, -1}}, {{1, 1}, {0, -1}}};
constexpr SymbolLine triangleLeft[] = {{{1, 1}, {1, -1}}, {{1, 1}, {-1, 0}}, {{1, -1}, {-1, 0}}};
constexpr SymbolLine triangleRight[] = {{{-1, 1}, {-1, -1}}, {{-1, 1}, {1, 0}}, {{-1, -1}, {1, 0}}};
constexpr SymbolLine diamond[]
    = {{{-1, 0}, {0, 1}}, {{0, 1}, {1, 0}}, {{1, 0}, {0, -1}}, {{0, -1}, {-1, 0}}};

constexpr int mostLines = 4;

template<int count> SymbolLines all(SymbolLine const (&lines)[count])
{
    static_assert(count <= mostLines);
    return {lines, count};
}

/// Keeps a coordinate where sums with a radius fit an int.
int withinPixels(int coordinate)
{
    return qBound(-pixelLimit, coordinate, pixelLimit);
}

/// The pattern of a dashed pen goes on from line to line.
void strokeLines(QPainter& painter, QPoint centre, int radius, SymbolLines const& symbolLines)
{
    QLine lines[mostLines];
    int count = 0;
    for (auto const& [from, to] : symbolLines)
        lines[count++] = QLine(centre + from * radius, centre + to * radius);
    painter.drawLines(lines, count);
}

} // namespace

SymbolLines linesOfSymbol(E_SYMBOL symbol)
{
    switch (static_cast<int>(symbol)) {
    case SYMBOL_PLUS:
        return all(plus);
    case SYMBOL_CROSS:
        return all(cross);
    case SYMBOL_TRIANGLE_DOWN:
        return all(triangleDown);
    case SYMBOL_TRIANGLE_UP:
        return all(triangleUp);
    case SYMBOL_TRIANGLE_LEFT:
        return all(triangleLeft);
    case SYMBOL_TRIANGLE_RIGHT:
        return all(triangleRight);
    case SYMBOL_DIAMOND:
        return all(diamond);
    default:
        return {};
    }
}

void paintSymbol(QPainter& painter, QPoint centre, E_SYMBOL symbol, int radius)
{
    int const x = withinPixels(centre.x());
    int const y = withinPixels(centre.y());
    int const r = withinPixels(radius);
    switch (static_cast<int>(symbol)) {
    case SYMBOL_DOT:
        painter.drawRect(QRect(QPoint(x, y), QPoint(x + r - 1, y + r - 1)));
        break;
    case SYMBOL_SQUARE:
        painter.drawRect(x - r, y - r, 2 * r, 2 * r);
        break;
    case SYMBOL_CIRCLE:
        painter.drawEllipse(x - r, y - r, 2 * r, 2 * r);
        break;
    case SYMBOL_PLUS:
    case SYMBOL_CROSS: // each line with dashes of its own
        for (auto const& [from, to] : linesOfSymbol(symbol))
            painter.drawLine(QPoint(x, y) + from * r, QPoint(x, y) + to * r);
        break;
    default:
        strokeLines(painter, QPoint(x, y), r, linesOfSymbol(symbol));
        break;
    }
}
