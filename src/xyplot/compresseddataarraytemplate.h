#pragma once

#include "abstractdataarraytemplate.h"
#include "zelplot_export.h"
#include <QVector>
#include <QtGlobal>
#include <limits>
#include <utility>

/**
 * A column of integers that stores runs instead of cells: for a status that rarely changes or a
 * counter that rises evenly, however long it gets.
 *
 * A run is a non-decreasing arithmetic progression; each fall starts a new one. Appending is O(1),
 * reading in order O(1) for each cell, reading elsewhere O(log runs), replacing and removing at
 * worst O(runs).
 *
 * The destructor leaves the runs allocated. Whoever holds the last reference calls reinit() before
 * giving it up, which releases them.
 *
 * The library holds the instance for int.
 */
template<typename T> class CompressedDataArrayTemplate : public AbstractDataArrayTemplate<T>
{
    static_assert(sizeof(T) <= sizeof(qint32), "progressions are reckoned in 64 bits");
    using Base = AbstractDataArrayTemplate<T>;

public:
    /// One run of cells.
    struct Chunk
    {
        int startIndex; ///< of its first cell in the column
        int length; ///< cells
        T firstValue;
        bool isConstant; ///< all cells equal `firstValue`
        T stepSize; ///< between neighbouring cells, not negative; means nothing for one cell

        /// Sets no field.
        Chunk() { ++numberOfChunks; } // NOLINT(cppcoreguidelines-pro-type-member-init)
        Chunk(int start, int cells, T first, T step)
            : startIndex(start)
            , length(cells)
            , firstValue(first)
            , isConstant(step == 0)
            , stepSize(step)
        {
            ++numberOfChunks;
        }
        Chunk(Chunk const& other)
            : startIndex(other.startIndex)
            , length(other.length)
            , firstValue(other.firstValue)
            , isConstant(other.isConstant)
            , stepSize(other.stepSize)
        {
            ++numberOfChunks;
        }
        Chunk& operator=(Chunk const&) = default;
        ~Chunk() { --numberOfChunks; }

        /// Value of cell @p offset of the run, 0 being the first.
        T getValue(int offset) const { return static_cast<T>(reckon(offset)); }
        /// Takes @p value as a further cell behind the last; false if it does not fit the run.
        bool appendIfPossible(T value);
        /// Takes @p value as a further cell before the first; false if it does not fit the run.
        bool prependIfPossible(T value);
        /// Takes over the cells of the run that follows; false if they do not fit.
        bool appendIfPossible(Chunk const* other);

        /// Runs alive in the process, temporary ones included.
        static int numberOfChunks;

    private:
        friend class CompressedDataArrayTemplate;

        /// Where a step would lead, also beyond the run, where it may be no T.
        qint64 reckon(int offset) const
        {
            return isConstant ? qint64(firstValue) : qint64(offset) * stepSize + firstValue;
        }
        /// Makes this run of one cell one of two; false if @p step falls or is no T.
        bool becomePair(T first, qint64 step);
        void becomeConstant(T value);
    };

    CompressedDataArrayTemplate() = default;
    explicit CompressedDataArrayTemplate(T const& sentinel)
        : Base(sentinel)
    {
    }

    int dataSize() const override { return totalSize; }
    void clearData() override;
    void appendData(double value) override { appendTypedData(this->toTyped(value)); }
    /// Ignores an index outside the column.
    void replaceData(int index, double value) override;
    /// Removes what lies inside the column.
    void removeData(int startIndex, int count) override;
    void removeOddIndexedData() override;
    /// Looks for the integer part of @p value; NaN finds the first hole if there is a sentinel.
    int linearSearchIndexOf(double value) const override;
    void squeezeData() override { chunks.squeeze(); }
    int getMemoryConsumption() const override
    {
        return this->saturatedToInt(qint64(chunks.capacity()) * bytesPerChunk);
    }
    T getTypedValue(int index) const override
    {
        Chunk const* const chunk = chunks[getChunkIndex(index)];
        return chunk->getValue(index - chunk->startIndex);
    }
    void appendTyped(T value) override
    {
        appendTypedData(value);
        this->afterRawAppend(static_cast<double>(value));
    }

    /// Stores a cell, without bookkeeping.
    void appendTypedData(T value);
    /// Index of the run that holds cell @p index; -1 if it is outside the column.
    int getChunkIndex(int index) const;
    int getNumberOfChunks() const { return static_cast<int>(chunks.size()); }
    /// Run @p chunkIndex; one that a destroyed column has left is the caller's to delete.
    Chunk const* getChunk(int chunkIndex) const { return chunks[chunkIndex]; }
    /// Whether all runs follow each other and none could be joined; tells faults in debug output.
    bool testRepresentationInvariant() const;

private:
    static constexpr qint64 bytesPerChunk = 20;

    bool isSlot(int slot) const { return slot >= 0 && slot < chunks.size(); }
    bool appendToSlot(int slot, T value)
    {
        return isSlot(slot) && chunks[slot]->appendIfPossible(value);
    }
    bool prependToSlot(int slot, T value)
    {
        return isSlot(slot) && chunks[slot]->prependIfPossible(value);
    }
    void removeSlot(int slot);
    bool mergeIntoPrevious(int slot);
    int mergeSingleIntoPrevious(int slot);
    void replaceSingle(int slot, T value);
    void replaceFirst(int slot, int index, T value);
    void replaceLast(int slot, int index, T value);
    void replaceInside(int slot, int index, T value);
    void appendChunk(T firstValue, int length, T step);

    QVector<Chunk*> chunks; // in the order of their cells
    int totalSize = 0;
    mutable int lastChunkIndex = -1; // found last; readers walk
};

template<typename T> bool CompressedDataArrayTemplate<T>::Chunk::becomePair(T first, qint64 step)
{
    if (step < 0 || step > std::numeric_limits<T>::max())
        return false;
    firstValue = first;
    stepSize = static_cast<T>(step);
    isConstant = step == 0;
    length = 2;
    return true;
}

template<typename T> void CompressedDataArrayTemplate<T>::Chunk::becomeConstant(T value)
{
    firstValue = value;
    isConstant = true;
    stepSize = 0;
}

template<typename T> bool CompressedDataArrayTemplate<T>::Chunk::appendIfPossible(T value)
{
    if (length == 0) {
        becomeConstant(value);
        length = 1;
        return true;
    }
    if (length == 1)
        return becomePair(firstValue, qint64(value) - firstValue);
    if (reckon(length) != value)
        return false;
    ++length;
    return true;
}

template<typename T> bool CompressedDataArrayTemplate<T>::Chunk::prependIfPossible(T value)
{
    if (length == 0) {
        becomeConstant(value);
        length = 1;
        return true;
    }
    if (length == 1) {
        if (!becomePair(value, qint64(firstValue) - value))
            return false;
    } else {
        if (reckon(-1) != value)
            return false;
        firstValue = value;
        ++length;
    }
    --startIndex;
    return true;
}

template<typename T>
bool CompressedDataArrayTemplate<T>::Chunk::appendIfPossible(Chunk const* other)
{
    if (startIndex + length != other->startIndex)
        return false;
    if (other->length == 0)
        return true;
    if (length == 0) {
        *this = *other;
        return true;
    }
    if (other->length == 1)
        return appendIfPossible(other->firstValue);
    if (length == 1) {
        Chunk joined(*other);
        if (!joined.prependIfPossible(firstValue))
            return false;
        *this = joined;
        return true;
    }
    if (stepSize != other->stepSize || reckon(length) != other->firstValue)
        return false;
    length += other->length;
    return true;
}

template<typename T> void CompressedDataArrayTemplate<T>::clearData()
{
    qDeleteAll(chunks);
    chunks = QVector<Chunk*>();
    totalSize = 0;
}

template<typename T> int CompressedDataArrayTemplate<T>::getChunkIndex(int index) const
{
    auto const starts = [this](int slot) { return chunks[slot]->startIndex; };
    auto const ends = [this](int slot) { return chunks[slot]->startIndex + chunks[slot]->length; };

    int const hint = lastChunkIndex;
    if (isSlot(hint)) {
        if (index >= starts(hint)) {
            if (index < ends(hint))
                return hint;
            if (isSlot(hint + 1) && index < ends(hint + 1))
                return lastChunkIndex = hint + 1;
        } else if (hint >= 1 && index >= starts(hint - 1)) {
            return lastChunkIndex = hint - 1;
        }
    }
    int low = 0;
    int high = static_cast<int>(chunks.size());
    while (low < high) {
        int const middle = low + (high - low) / 2;
        if (index < starts(middle))
            high = middle;
        else if (index < ends(middle))
            return lastChunkIndex = middle;
        else
            low = middle + 1;
    }
    return lastChunkIndex = -1;
}

template<typename T> void CompressedDataArrayTemplate<T>::appendTypedData(T value)
{
    if (totalSize == 0 || !chunks.constLast()->appendIfPossible(value))
        chunks.append(new Chunk(totalSize, 1, value, 0));
    ++totalSize;
}

template<typename T> int CompressedDataArrayTemplate<T>::linearSearchIndexOf(double value) const
{
    T const target = this->toTyped(value);
    for (Chunk const* const chunk : chunks) {
        if (chunk->firstValue == target)
            return chunk->startIndex;
        if (chunk->isConstant || target < chunk->firstValue
            || target > chunk->getValue(chunk->length - 1))
            continue;
        qint64 const distance = qint64(target) - chunk->firstValue;
        if (distance % chunk->stepSize == 0)
            return chunk->startIndex + static_cast<int>(distance / chunk->stepSize);
    }
    return -1;
}

template<typename T> void CompressedDataArrayTemplate<T>::removeSlot(int slot)
{
    delete chunks[slot];
    chunks.removeAt(slot);
}

/// Joins the run in @p slot to the one before it, if both exist and fit.
template<typename T> bool CompressedDataArrayTemplate<T>::mergeIntoPrevious(int slot)
{
    if (slot < 1 || !isSlot(slot) || !chunks[slot - 1]->appendIfPossible(chunks[slot]))
        return false;
    removeSlot(slot);
    return true;
}

/// The same for a run that has shrunk to one cell; gives the slot where that cell now is.
template<typename T> int CompressedDataArrayTemplate<T>::mergeSingleIntoPrevious(int slot)
{
    return chunks[slot]->length == 1 && mergeIntoPrevious(slot) ? slot - 1 : slot;
}

template<typename T> void CompressedDataArrayTemplate<T>::replaceData(int index, double value)
{
    T const target = this->toTyped(value);
    int const slot = getChunkIndex(index);
    if (slot < 0)
        return;
    Chunk const* const chunk = chunks[slot];
    int const offset = index - chunk->startIndex;
    if (chunk->getValue(offset) == target)
        return;
    if (chunk->length == 1)
        replaceSingle(slot, target);
    else if (offset == 0)
        replaceFirst(slot, index, target);
    else if (offset == chunk->length - 1)
        replaceLast(slot, index, target);
    else
        replaceInside(slot, index, target);
}

template<typename T> void CompressedDataArrayTemplate<T>::replaceSingle(int slot, T value)
{
    if (appendToSlot(slot - 1, value) || prependToSlot(slot + 1, value)) {
        removeSlot(slot);
        mergeIntoPrevious(slot);
    } else {
        chunks[slot]->becomeConstant(value);
    }
}

template<typename T> void CompressedDataArrayTemplate<T>::replaceFirst(int slot, int index, T value)
{
    Chunk* const chunk = chunks[slot];
    ++chunk->startIndex;
    --chunk->length;
    chunk->firstValue = chunk->getValue(1);
    if (chunk->length == 1)
        mergeIntoPrevious(slot + 1);
    if (appendToSlot(slot - 1, value) || chunk->prependIfPossible(value))
        mergeIntoPrevious(slot);
    else
        chunks.insert(slot, new Chunk(index, 1, value, 0));
}

template<typename T> void CompressedDataArrayTemplate<T>::replaceLast(int slot, int index, T value)
{
    --chunks[slot]->length;
    int const before = mergeSingleIntoPrevious(slot);
    int const behind = before + 1;
    if (prependToSlot(behind, value) || chunks[before]->appendIfPossible(value))
        mergeIntoPrevious(behind);
    else
        chunks.insert(behind, new Chunk(index, 1, value, 0));
}

template<typename T>
void CompressedDataArrayTemplate<T>::replaceInside(int slot, int index, T value)
{
    Chunk* const chunk = chunks[slot];
    int const offset = index - chunk->startIndex;
    auto* const tail = new Chunk(index + 1, chunk->length - offset - 1, chunk->getValue(offset + 1),
                                 chunk->stepSize);
    chunks.insert(slot + 1, tail);
    if (tail->length == 1) {
        tail->becomeConstant(tail->firstValue);
        mergeIntoPrevious(slot + 2);
    }
    chunk->length = offset;
    if (offset == 1)
        chunk->becomeConstant(chunk->firstValue);
    int const before = mergeSingleIntoPrevious(slot);
    if (!chunks[before]->appendIfPossible(value) && !tail->prependIfPossible(value))
        chunks.insert(before + 1, new Chunk(index, 1, value, 0));
}

template<typename T> void CompressedDataArrayTemplate<T>::removeData(int startIndex, int count)
{
    qint64 const askedEnd = qint64(startIndex) + qMax(count, 0);
    int const end = static_cast<int>(qMin<qint64>(askedEnd, totalSize));
    startIndex = qMax(startIndex, 0);
    count = end - startIndex;
    if (count <= 0)
        return;
    int const first = getChunkIndex(startIndex);
    int const last = getChunkIndex(end - 1);

    auto* const left = new Chunk(*chunks[first]);
    auto* const right = new Chunk(*chunks[last]);
    int const removedOfRight = end - right->startIndex;
    left->length = startIndex - left->startIndex;
    right->length -= removedOfRight;
    right->startIndex = startIndex;
    if (right->length > 0) // else the value may be none
        right->firstValue = chunks[last]->getValue(removedOfRight);

    for (int slot = last + 1; slot < chunks.size(); ++slot)
        chunks[slot]->startIndex -= count;
    for (int slot = first; slot <= last; ++slot)
        delete chunks[slot];
    chunks.remove(first, last - first + 1);
    chunks.insert(first, right);
    chunks.insert(first, left);

    mergeIntoPrevious(first + 2);
    mergeIntoPrevious(first + 1);
    bool const joined = mergeIntoPrevious(first);
    if (!joined && left->length == 0)
        removeSlot(first);
    totalSize -= count;
}

template<typename T> void CompressedDataArrayTemplate<T>::removeOddIndexedData()
{
    QVector<Chunk*> const all = std::exchange(chunks, QVector<Chunk*>());
    totalSize = 0;
    for (Chunk const* const chunk : all) {
        int const dropped = chunk->startIndex % 2; // 1 if the run begins with a cell that goes
        int const kept = (chunk->length + 1 - dropped) / 2;
        qint64 const step = chunk->isConstant ? 0 : 2 * qint64(chunk->stepSize);
        if (kept > 1 && step > std::numeric_limits<T>::max()) {
            // Too far apart for a step: a run for each.
            for (int i = 0; i < kept; ++i)
                appendChunk(chunk->getValue(dropped + 2 * i), 1, 0);
        } else if (kept > 0) {
            appendChunk(chunk->getValue(dropped), kept, kept > 1 ? static_cast<T>(step) : T(0));
        }
    }
    qDeleteAll(all);
}

template<typename T>
void CompressedDataArrayTemplate<T>::appendChunk(T firstValue, int length, T step)
{
    auto* const chunk = new Chunk(totalSize, length, firstValue, step);
    if (!chunks.isEmpty() && chunks.constLast()->appendIfPossible(chunk))
        delete chunk;
    else
        chunks.append(chunk);
    totalSize += length;
}

template<typename T> bool CompressedDataArrayTemplate<T>::testRepresentationInvariant() const
{
    bool holds = true;
    auto const test = [&holds](bool condition, char const* what) {
        holds = holds && condition;
        if (!holds)
            qDebug("%s", what);
    };
    Chunk previous(0, 0, 0, 0);
    for (int slot = 0; slot < chunks.size(); ++slot) {
        Chunk const* const chunk = chunks[slot];
        test(chunk->length >= 1, "chunk length");
        if (slot == 0) {
            test(chunk->startIndex == 0, "first chunk start index");
        } else {
            test(chunk->startIndex == previous.startIndex + previous.length,
                 "consecutivity of indices");
            test(!previous.appendIfPossible(chunk), "non-combinability");
        }
        previous = *chunk;
    }
    test(previous.startIndex + previous.length == totalSize, "size correctness");
    return holds;
}

extern template class ZELPLOT_EXPORT CompressedDataArrayTemplate<int>;
