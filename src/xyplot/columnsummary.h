#pragma once

#include "cellvector.h"
#include "zelplot_export.h"
#include "zelplotglobals.h"
#include <QtGlobal>
#include <limits>
#include <vector>

/// What a run of cells of a column amounts to.
struct RunSummary
{
    double smallest = NaN; ///< of the cells that are no holes; NaN if there are none
    double largest = NaN;
    /// Largest difference of a cell to the one before it, both within the run and no holes;
    /// infinite where it is none (of two equal infinities), minus infinity without such a pair.
    double largestStep = -std::numeric_limits<double>::infinity();
    int holes = 0;

    /// Takes the run that follows, whose first step is the one across the border.
    void join(RunSummary const& next)
    {
        smallest = smallest <= next.smallest || next.smallest != next.smallest ? smallest
                                                                               : next.smallest;
        largest = largest >= next.largest || next.largest != next.largest ? largest : next.largest;
        largestStep = largestStep >= next.largestStep ? largestStep : next.largestStep;
        holes += next.holes;
    }
};

/// The smallest and the largest of some numbers; of none, the smallest is above the largest.
struct Extremes
{
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();

    void include(Extremes const& others)
    {
        smallest = others.smallest < smallest ? others.smallest : smallest;
        largest = others.largest > largest ? others.largest : largest;
    }
};

/**
 * Summaries of a dense column in levels: of each 64 cells, of each 64 of these, and so on.
 *
 * They answer for any run of cells what it amounts to, without a visit to each, in
 * O(64 log64 n). They take 1/16 of the memory of the column. The column keeps them up: the next
 * question takes in what has been appended, at O(1) a cell; replacing a cell costs O(64 log64 n),
 * dropping cells from the front O(1), amortised; anything else makes them anew.
 */
class ZELPLOT_EXPORT ColumnSummary
{
public:
    static constexpr int fanOut = 64; ///< cells of a node of the lowest level

    /// The cells of the column at the time of a call.
    struct Cells
    {
        double const* values;
        int size;
        double sentinel; ///< a value that stands for a hole; NaN for none

        bool isHole(int index) const
        {
            return values[index] != values[index] || values[index] == sentinel;
        }
        /// From the cell before; minus infinity at a hole, behind one and for the first.
        double stepTo(int index) const;
    };

    explicit ColumnSummary(Cells const& cells);

    /// Takes the cells that were appended since; to be called before a question.
    void catchUp(Cells const& cells)
    {
        if (levels.front().end() < completeLeaves(cells))
            addLeaves(cells);
    }
    void replaced(Cells const& cells, int index);
    /// Tells that @p count cells have left the front.
    void leftShifted(Cells const& cells, int count);

    /// Of cells @p first to @p last, which must exist; nothing if there are none.
    RunSummary of(Cells const& cells, int first, int last) const;
    /// Of the same cells, none of which may be a hole; in a fraction of the time.
    Extremes extremesOf(Cells const& cells, int first, int last) const;
    /// Fetches into the caches of the processor what extremesOf() needs if it begins or ends at
    /// @p index.
    void fetchAhead(Cells const& cells, int index) const;
    /// The first of cells @p first to @p last that is a hole; @p last + 1 if none is.
    int firstHole(Cells const& cells, int first, int last) const;
    /// The first of them that is no hole.
    int firstValid(Cells const& cells, int first, int last) const;
    /// The first of them that is a hole or not @p value.
    int firstOther(Cells const& cells, int first, int last, double value) const;
    /// The first of them, behind @p first, that lies more than @p limit above the one before.
    int firstStepAbove(Cells const& cells, int first, int last, double limit) const;

private:
    /// Of complete runs only. What extremesOf() needs lies apart, so that it reads half the memory.
    struct Level
    {
        struct Rest
        {
            double largestStep;
            int holes;
        };
        CellVector<Extremes> extremes;
        CellVector<Rest> rests;
        qint64 firstNode = 0; // number of the first one kept, counted from when all began
        qint64 span = fanOut; // cells of a node

        bool holds(qint64 node) const
        {
            return node >= firstNode && node - firstNode < qint64(rests.size());
        }
        RunSummary at(qint64 node) const;
        void set(qint64 node, RunSummary const& summary);
        void append(RunSummary const& summary);
        void removeFront(int count);
        qint64 end() const { return firstNode + rests.size(); }
    };

    qint64 completeLeaves(Cells const& cells) const { return (dropped + cells.size) / fanOut; }
    void addLeaves(Cells const& cells);
    RunSummary summarizeLeaf(Cells const& cells, qint64 leaf) const;
    RunSummary summarizeChildren(size_t level, qint64 node) const;
    void completeParents();
    void recompute(Cells const& cells, qint64 place);
    template<typename SkipsNode, typename IsFound>
    int find(int first, int last, SkipsNode skips, IsFound isFound) const;

    std::vector<Level> levels; // the lowest first
    qint64 dropped = 0; // cells that have left the front; a place is an index plus these
};
