#include "look.h"

#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QPainter>
#include <utility>

namespace {
DebugTag debugTag("Look", "src/look/look");

/// Percentage at which the colours of a colour bar's groove are drawn: a little darker.
constexpr int grooveLightness = 90;

/// For sums of pixels and products of a thickness: as far as a painter is ever asked to go.
int clampToPixels(qint64 value)
{
    return int(qBound(qint64(-pixelLimit), value, qint64(pixelLimit)));
}

double blend(int a, int b, double fraction)
{
    return fraction * b + (1.0 - fraction) * a;
}

int blendChannel(int a, int b, double fraction)
{
    return qBound(0, truncateToInt(blend(a, b, fraction)), 255);
}

bool differsInAPart(Look::Entry const& left, Look::Entry const& right, Look::EntryParts parts)
{
    return (parts.testFlag(Look::EntryPartColor) && left.color != right.color)
        || (parts.testFlag(Look::EntryPartSymbol) && left.symbol != right.symbol)
        || (parts.testFlag(Look::EntryPartPenStyle) && left.penStyle != right.penStyle)
        || (parts.testFlag(Look::EntryPartLineThickness)
            && left.lineThickness != right.lineThickness);
}
} // namespace

Look::Look(XYDataSet* owner, QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle,
           int lineThickness)
    : dataSet(owner)
    , defaultEntry{color, symbol, penStyle, lineThickness}
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("Look"));
    owner->setLook(this);
}

Look::~Look()
{
    if (dataSet)
        dataSet->unsetLook(this);
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("Look"));
}

XYDataSet* Look::getDataSet() const
{
    return dataSet;
}

int Look::pointCount() const
{
    return dataSet ? dataSet->yData->dataSize() : 0;
}

void Look::changeFromLast(Look::Entry entry)
{
    int const index = pointCount() - 1;
    if (!history.isEmpty() && index <= history.constLast().index)
        dropRowsFrom(index);
    history.append({index, entry});
    registerLookEntryPresence(entry, true);
    checkAndEmitLastAppearanceChanged();
}

void Look::changeFromLast(QColor color)
{
    Entry entry = getApplicableLookEntry(pointCount() - 1);
    if (entry.color == color)
        return;
    entry.color = color;
    changeFromLast(entry);
}

void Look::changeFromLast(QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness)
{
    changeFromLast(Entry{color, symbol, penStyle, lineThickness});
}

void Look::setDefault(QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness)
{
    Entry const entry{color, symbol, penStyle, lineThickness};
    if (entry == defaultEntry)
        return;
    defaultEntry = entry;
    Q_EMIT lastAppearanceChanged();
}

void Look::setDefaultLineThickness(int lineThickness)
{
    setDefault(defaultEntry.color, defaultEntry.symbol, defaultEntry.penStyle, lineThickness);
}

void Look::setHorizontalDisconnectionThreshold(double distance)
{
    horizontalDisconnectionThreshold = distance;
}

/// Keeps the rows before @p index, so that a row appended there continues the ascent.
void Look::dropRowsFrom(int index)
{
    int const row = searchApplicableIndex(index);
    bool const rowStays = row >= 0 && history.at(row).index < index;
    history.erase(history.cbegin() + (rowStays ? row + 1 : qMax(row, 0)), history.cend());
}

/// True if @p index, at or above the row's, lies below that of the next row.
inline bool Look::appliesUntilNextRow(int row, int index) const
{
    return row + 1 == history.size() || index < history.at(row + 1).index;
}

/// Last row at or below @p index; -1 if the first one lies above it. Reads in rising order are
/// O(1).
inline int Look::searchApplicableIndex(int index) const
{
    int const hint = searchHint;
    if (hint >= 0 && hint < history.size() && history.at(hint).index <= index
        && appliesUntilNextRow(hint, index))
        return hint;
    return searchFromHint(index);
}

int Look::searchFromHint(int index) const
{
    int const hint = searchHint;
    searchHint = -1;
    if (history.isEmpty() || history.constFirst().index > index)
        return -1;
    int low = 0;
    int high = int(history.size());
    int middle = hint >= 0 && hint < high ? hint : high / 2;
    for (;;) {
        if (history.at(middle).index <= index) {
            if (appliesUntilNextRow(middle, index))
                return searchHint = middle;
            low = middle + 1;
            // A reader that walks upwards has just entered the row after the hint.
            if (middle == hint && appliesUntilNextRow(low, index))
                return searchHint = low;
        } else {
            high = middle;
        }
        if (high <= low) {
            qWarning("Look::searchApplicableIndex: Binary search has failed where a success was "
                     "expected.");
            return -1;
        }
        middle = low + (high - low) / 2;
    }
}

Look::Entry Look::getApplicableLookEntry(int index)
{
    int const row = searchApplicableIndex(index);
    return row < 0 ? defaultEntry : history.at(row).entry;
}

bool Look::isChanged(int index)
{
    if (index == 0)
        return true;
    int const row = searchApplicableIndex(index);
    return row >= 0 && history.at(row).index == index;
}

int Look::getEndOfAppearance(int index) const
{
    int const next = searchApplicableIndex(index) + 1;
    return next < history.size() ? history.at(next).index - 1 : std::numeric_limits<int>::max();
}

QColor Look::getMultiLineColor(int index, int /*line*/)
{
    return getColor(index);
}

bool Look::mustDrawMarker(int index) const
{
    if (!drawMarkerOnYValueChange || index < 1 || !dataSet)
        return false;
    DataArray const* const column = dataSet->yData;
    return column->getValue(index) != column->getValue(index - 1);
}

void Look::checkAndEmitLastAppearanceChanged()
{
    int const size = pointCount();
    if (size == 0)
        return;
    Entry const entry = getApplicableLookEntry(size - 1);
    if (lastEntryValid && entry == lastEntry)
        return;
    lastEntryValid = true;
    lastEntry = entry;
    Q_EMIT lastAppearanceChanged();
}

void Look::registerLookEntryPresence(Look::Entry entry, bool emitSignal)
{
    auto const sizeBefore = presentLookEntries.size();
    presentLookEntries.insert(entry);
    if (emitSignal && presentLookEntries.size() > sizeBefore)
        Q_EMIT presentLookEntriesChanged();
}

void Look::fillPresentLookEntries()
{
    presentLookEntries.clear();
    for (IndexedEntry const& row : std::as_const(history))
        registerLookEntryPresence(row.entry, false);
    Q_EMIT presentLookEntriesChanged();
}

void Look::leftShift(int numberOfPoints)
{
    int const firstRow = searchApplicableIndex(numberOfPoints);
    if (firstRow < 0) {
        // Also rows of later points go, where the new first point precedes them all.
        history.clear();
    } else {
        history.remove(0, firstRow);
        for (IndexedEntry& row : history)
            row.index = qMax(row.index - numberOfPoints, 0);
    }
    presentLookEntries.clear();
    fillPresentLookEntries();
}

void Look::decimateKeepEven()
{
    QVector<IndexedEntry> thinned;
    thinned.reserve(history.size());
    for (int i = 0; i < history.size(); ++i) {
        IndexedEntry row = history.at(i);
        bool const even = row.index % 2 == 0;
        // The only point of this row that could survive already belongs to the next row.
        if (!even && i + 1 < history.size() && history.at(i + 1).index <= row.index + 1)
            continue;
        row.index = row.index / 2 + (even ? 0 : 1);
        // A row made before the first point moves to 1, where the next one may have come too.
        if (!thinned.isEmpty() && thinned.constLast().index >= row.index)
            thinned.removeLast();
        thinned.append(row);
    }
    history = thinned;
}

void Look::clear()
{
    history.clear();
    presentLookEntries.clear();
    fillPresentLookEntries();
}

void Look::setOffsettedFixedPositioned(int offset)
{
    positionMode = PixelOffset;
    position = float(offset);
    autoPositioned = false;
}

void Look::setFractionallyFixedPositioned(float fraction)
{
    positionMode = FractionOfHeight;
    position = fraction;
    autoPositioned = fraction == -1.0F;
}

void Look::setColorBar(int offset)
{
    colorBar = true;
    setOffsettedFixedPositioned(offset);
}

int Look::getOffset() const
{
    if (!isOffsetPositioned())
        return 0;
    int const offset = roundHalfUp(double(position));
    if (!colorBar)
        return offset;
    return roundHalfUp(double(offset) * getPlotRenderSettings().barThicknessFactor);
}

int Look::getFixedYPosition(int height) const
{
    switch (positionMode) {
    case NotFixed:
        return 0;
    case FractionOfHeight:
        // In single precision, as the fraction is: 0.7 of 5 pixels is 3.5 and not a little less.
        return roundHalfUp(double(float(height) * position));
    case PixelOffset: {
        int const offset = getOffset();
        return offset < 0 ? roundHalfUp(double(height) + offset) : offset;
    }
    }
    debugTag.assertionFailed(__func__, __LINE__, "Missing case");
    return 0;
}

void Look::drawColorBarBackground(QPainter& painter, QPoint const& centre, int width) const
{
    struct Edge
    {
        char const* color;
        int inset; // pixels from the border of the groove
    };
    constexpr Edge edges[] = {{"#e9e9e9", 2}, {"#e4e4e4", 1}, {"#e0e0e0", 0}};

    qint64 const thickness
        = qint64(getDefaultLineThickness()) * getPlotRenderSettings().barThicknessFactor;
    qint64 const half = (thickness + 1) / 2;
    qint64 const middle = centre.y();
    auto const drawLineAt = [&painter, width](qint64 y) {
        painter.drawLine(0, clampToPixels(y), width, clampToPixels(y));
    };

    QColor const fill = QColor("#ededed").lighter(grooveLightness);
    painter.setPen(QPen(fill, qMax(0, clampToPixels(thickness)), Qt::SolidLine));
    drawLineAt(middle);
    for (Edge const& edge : edges) {
        painter.setPen(QColor(edge.color).lighter(grooveLightness));
        drawLineAt(middle + half - edge.inset);
        drawLineAt(middle - half + edge.inset);
    }
}

void Look::setLegendText(Look::Entry entry, QString text, QFlags<Look::EntryPart> parts)
{
    legendTexts.append({entry, parts, std::move(text)});
}

void Look::setLegendText(QColor color, QString text)
{
    Entry entry = defaultEntry;
    entry.color = color;
    setLegendText(entry, std::move(text), EntryPartColor);
}

QString Look::getLookEntryLegendText(Look::Entry const& entry)
{
    QString text;
    EntryParts best;
    for (EntryLegendText const& rule : std::as_const(legendTexts)) {
        if (differsInAPart(rule.entry, entry, rule.parts) || (rule.parts & best) != best)
            continue;
        text = rule.text;
        best = rule.parts;
    }
    return text;
}

Look::Entry Look::getLookEntryByLegendText(QString const& text) const
{
    for (EntryLegendText const& rule : legendTexts) {
        if (rule.text == text)
            return rule.entry;
    }
    return {};
}

QVector<Look::Entry> Look::getLookEntriesForLegend() const
{
    if (!mustIncludeAllEntriesInLegendFlag)
        return presentLookEntries.values();
    QVector<Entry> entries;
    entries.reserve(legendTexts.size());
    for (EntryLegendText const& rule : legendTexts)
        entries.append(rule.entry);
    return entries;
}

Look::Entry Look::interpolateLookEntry(Look::Entry const& a, Look::Entry const& b, double fraction)
{
    Entry blended = a;
    blended.color.setRed(blendChannel(a.color.red(), b.color.red(), fraction));
    blended.color.setGreen(blendChannel(a.color.green(), b.color.green(), fraction));
    blended.color.setBlue(blendChannel(a.color.blue(), b.color.blue(), fraction));
    blended.lineThickness = truncateToInt(blend(a.lineThickness, b.lineThickness, fraction));
    return blended;
}
