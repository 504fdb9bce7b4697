#include "columnsummary.h"

#include <algorithm>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

RunSummary summaryOfCell(ColumnSummary::Cells const& cells, int index)
{
    RunSummary summary;
    if (cells.isHole(index)) {
        summary.holes = 1;
        return summary;
    }
    summary.smallest = cells.values[index];
    summary.largest = cells.values[index];
    summary.largestStep = cells.stepTo(index);
    return summary;
}

Extremes extremesOfRun(RunSummary const& summary)
{
    bool const isNone = summary.smallest != summary.smallest;
    return isNone ? Extremes() : Extremes{summary.smallest, summary.largest};
}

/// Those of elements @p from to before @p to that exist.
template<typename T> void fetch(T const* elements, qint64 from, qint64 to, qint64 count)
{
    constexpr qint64 elementsOfLine = 64 / sizeof(T); // bytes of a line of most caches
    to = std::min(to, count);
    for (qint64 i = std::max<qint64>(from, 0); i < to; i += elementsOfLine)
        __builtin_prefetch(elements + i);
}

} // namespace

RunSummary ColumnSummary::Level::at(qint64 node) const
{
    auto const slot = int(node - firstNode);
    Extremes const& ends = extremes[slot];
    Rest const& rest = rests[slot];
    bool const isNone = ends.smallest > ends.largest;
    return {isNone ? NaN : ends.smallest, isNone ? NaN : ends.largest, rest.largestStep,
            rest.holes};
}

void ColumnSummary::Level::set(qint64 node, RunSummary const& summary)
{
    auto const slot = int(node - firstNode);
    extremes.set(slot, extremesOfRun(summary));
    rests.set(slot, {summary.largestStep, summary.holes});
}

void ColumnSummary::Level::append(RunSummary const& summary)
{
    extremes.append(extremesOfRun(summary));
    rests.append({summary.largestStep, summary.holes});
}

void ColumnSummary::Level::removeFront(int count)
{
    extremes.remove(0, count);
    rests.remove(0, count);
    firstNode += count;
}

double ColumnSummary::Cells::stepTo(int index) const
{
    if (index < 1 || isHole(index) || isHole(index - 1))
        return -infinity;
    double const step = values[index] - values[index - 1];
    return step == step ? step : infinity;
}

ColumnSummary::ColumnSummary(Cells const& cells)
    : levels(1)
{
    addLeaves(cells);
}

/// Of the cells of one node of the lowest level.
RunSummary ColumnSummary::summarizeLeaf(Cells const& cells, qint64 leaf) const
{
    RunSummary summary;
    if (leaf * fanOut < dropped)
        return summary; // its first cells have left, so it is never asked
    auto const begin = int(leaf * fanOut - dropped);
    for (int i = 0; i < fanOut; ++i)
        summary.join(summaryOfCell(cells, begin + i));
    return summary;
}

RunSummary ColumnSummary::summarizeChildren(size_t level, qint64 node) const
{
    RunSummary summary;
    for (qint64 child = node * fanOut; child < (node + 1) * fanOut; ++child)
        summary.join(levels[level - 1].at(child));
    return summary;
}

void ColumnSummary::addLeaves(Cells const& cells)
{
    while (levels.front().end() < completeLeaves(cells)) {
        levels.front().append(summarizeLeaf(cells, levels.front().end()));
        completeParents();
    }
}

/// Makes each node above whose last child has just come.
void ColumnSummary::completeParents()
{
    for (size_t level = 1;; ++level) {
        qint64 const children = levels[level - 1].end();
        if (children % fanOut != 0)
            return;
        qint64 const node = children / fanOut - 1;
        if (level == levels.size()) {
            levels.emplace_back();
            levels[level].firstNode = node;
            levels[level].span = levels[level - 1].span * fanOut;
        }
        // One whose first children have left with their cells is never asked; it keeps the count.
        bool const isWhole = levels[level - 1].holds(node * fanOut);
        levels[level].append(isWhole ? summarizeChildren(level, node) : RunSummary());
    }
}

void ColumnSummary::replaced(Cells const& cells, int index)
{
    recompute(cells, dropped + index);
    if ((dropped + index + 1) % fanOut == 0)
        recompute(cells, dropped + index + 1); // the step out of the cell belongs to the next
}

void ColumnSummary::recompute(Cells const& cells, qint64 place)
{
    for (size_t i = 0; i < levels.size(); ++i) {
        Level& level = levels[i];
        qint64 const node = place / level.span;
        if (node * level.span < dropped || !level.holds(node))
            return;
        level.set(node, i == 0 ? summarizeLeaf(cells, node) : summarizeChildren(i, node));
    }
}

void ColumnSummary::leftShifted(Cells const& cells, int count)
{
    dropped += count;
    for (Level& level : levels) {
        qint64 const gone = std::min(dropped / level.span, level.end()) - level.firstNode;
        level.removeFront(int(gone));
    }
    catchUp(cells);
}

RunSummary ColumnSummary::of(Cells const& cells, int first, int last) const
{
    RunSummary summary;
    if (first > last)
        return summary;
    summary = summaryOfCell(cells, first);
    summary.largestStep = -infinity; // that into the run is none of it
    auto const join = [&](RunSummary const& part) {
        summary.join(part);
        return true;
    };
    find(first + 1, last, join, [&](int index) {
        summary.join(summaryOfCell(cells, index));
        return false;
    });
    return summary;
}

void ColumnSummary::fetchAhead(Cells const& cells, int index) const
{
    qint64 const place = dropped + index;
    qint64 const leafBegin = place / fanOut * fanOut - dropped;
    fetch(cells.values, leafBegin, leafBegin + fanOut, cells.size);
    for (Level const& level : levels) {
        qint64 const siblings = place / level.span / fanOut * fanOut - level.firstNode;
        fetch(level.extremes.data(), siblings, siblings + fanOut, level.extremes.size());
    }
}

/// Level by level from both ends inwards: what is left over of the nodes of one level is within
/// nodes of the next.
Extremes ColumnSummary::extremesOf(Cells const& cells, int first, int last) const
{
    Extremes found;
    qint64 begin = dropped + first; // in cells, then in nodes of the lowest level, and so on
    qint64 end = dropped + last + 1;
    auto const include = [&](size_t level, qint64 from, qint64 to) {
        if (level == 0) {
            for (double const* cell = cells.values + (from - dropped);
                 cell != cells.values + (to - dropped); ++cell)
                found.include({*cell, *cell});
        } else {
            Level const& nodes = levels[level - 1];
            for (qint64 node = from; node < to; ++node)
                found.include(nodes.extremes[int(node - nodes.firstNode)]);
        }
    };
    for (size_t level = 0;; ++level) {
        bool const isHighest = level == levels.size();
        qint64 const inner = (begin + fanOut - 1) / fanOut;
        qint64 const innerEnd = isHighest ? inner : std::min(end / fanOut, levels[level].end());
        if (innerEnd <= inner || !levels[level].holds(inner)) {
            include(level, begin, end);
            return found;
        }
        include(level, begin, inner * fanOut);
        include(level, innerEnd * fanOut, end);
        begin = inner;
        end = innerEnd;
    }
}

int ColumnSummary::firstHole(Cells const& cells, int first, int last) const
{
    return find(
        first, last, [](RunSummary const& node) { return node.holes == 0; },
        [&](int index) { return cells.isHole(index); });
}

int ColumnSummary::firstValid(Cells const& cells, int first, int last) const
{
    return find(
        first, last, [](RunSummary const& node) { return node.smallest != node.smallest; },
        [&](int index) { return !cells.isHole(index); });
}

int ColumnSummary::firstOther(Cells const& cells, int first, int last, double value) const
{
    return find(
        first, last,
        [=](RunSummary const& node) {
            return node.holes == 0 && node.smallest == value && node.largest == value;
        },
        [&](int index) { return cells.isHole(index) || cells.values[index] != value; });
}

int ColumnSummary::firstStepAbove(Cells const& cells, int first, int last, double limit) const
{
    return find(
        first + 1, last, [=](RunSummary const& node) { return !(node.largestStep > limit); },
        [&](int index) { return cells.stepTo(index) > limit; });
}

/**
 * Walks from @p first to @p last in the largest nodes that fit, into those that @p skips does not
 * pass over, and cell by cell elsewhere.
 *
 * @return the first cell that @p isFound takes; @p last + 1 if it takes none
 */
template<typename SkipsNode, typename IsFound>
int ColumnSummary::find(int first, int last, SkipsNode skips, IsFound isFound) const
{
    qint64 place = dropped + first;
    qint64 const end = dropped + last + 1;
    size_t highest = levels.size(); // below the node that holds what is sought
    while (place < end) {
        bool passed = false;
        for (size_t i = highest; i-- > 0;) {
            Level const& level = levels[i];
            if (place % level.span != 0 || place + level.span > end
                || !level.holds(place / level.span))
                continue;
            if (skips(level.at(place / level.span))) {
                place += level.span;
                passed = true;
                break;
            }
            highest = i;
        }
        if (passed)
            continue;
        // Up to the next leaf, cell by cell.
        do {
            auto const index = int(place - dropped);
            if (isFound(index))
                return index;
            ++place;
        } while (place < end && place % fanOut != 0);
    }
    return last + 1;
}
