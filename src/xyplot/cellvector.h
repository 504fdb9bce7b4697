#pragma once

#include "cellmemory.h"
#include <QtGlobal>
#include <QtMath>
#include <cstring>
#include <type_traits>
#include <utility>

/**
 * The cells of a dense column: a vector that only writes when it appends, and leaves new cells
 * unset when it is extended.
 *
 * It has as many cells to spare as a QVector would, at all times.
 */
template<typename T> class CellVector
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    CellVector() = default;
    CellVector(CellVector&& other) noexcept { swap(other); }
    Q_DISABLE_COPY(CellVector)
    ~CellVector() { clear(); }

    int size() const { return count; }
    T const* data() const { return cells; }
    T const& operator[](int index) const { return cells[index]; }
    /// Cells that there is memory for.
    qsizetype capacity() const { return allocated; }

    void set(int index, T value) { cells[index] = value; }
    /// Whether the next cell only needs to be written.
    bool hasRoom() const { return count < room; }
    void appendInRoom(T value) { cells[count++] = value; }
    void append(T value)
    {
        if (!hasRoom())
            makeRoom(1);
        appendInRoom(value);
    }
    /// The first of @p added more cells, which must be written.
    T* extend(int added)
    {
        if (added > room - count)
            makeRoom(added);
        count += added;
        return cells + count - added;
    }
    void append(T const* values, int added)
    {
        T* const to = extend(added);
        writeCells(to, values, size_t(added) * sizeof(T), size_t(allocated) * sizeof(T));
    }
    void remove(int first, int removed)
    {
        if (first == 0 && removed < count) { // memory in front is used when there is none behind
            cells += removed;
            room -= removed;
        } else {
            moveCells(cells + first, cells + first + removed, count - first - removed);
        }
        count -= removed;
    }
    void squeeze()
    {
        closeGap();
        resizeMemory(count);
    }
    void clear()
    {
        count = 0;
        squeeze();
    }
    void swap(CellVector& other)
    {
        std::swap(memory, other.memory);
        std::swap(cells, other.cells);
        std::swap(allocated, other.allocated);
        std::swap(room, other.room);
        std::swap(count, other.count);
    }

private:
    static void moveCells(T* to, T const* from, int number)
    {
        if (number > 0)
            std::memmove(to, from, size_t(number) * sizeof(T));
    }
    void closeGap()
    {
        moveCells(memory, cells, count);
        cells = memory;
        room = allocated;
    }
    void resizeMemory(qsizetype newCapacity)
    {
        qsizetype const gap = cells - memory;
        memory = static_cast<T*>(resizeCellMemory(memory, size_t(allocated) * sizeof(T),
                                                  size_t(newCapacity) * sizeof(T)));
        allocated = newCapacity;
        cells = memory + gap;
        room = allocated - gap;
    }
    Q_NEVER_INLINE void makeRoom(int added)
    {
        qsizetype const gap = cells - memory;
        if (gap >= added && 3 * qsizetype(count) < 2 * allocated)
            closeGap();
        else
            resizeMemory(capacityFor(gap + count + added));
    }
    /// The next power of two in bytes, less what a QVector keeps ahead of its cells.
    static qsizetype capacityFor(qsizetype number)
    {
        constexpr quint64 header = 16;
        quint64 const bytes = qNextPowerOfTwo(quint64(number) * sizeof(T) + header);
        return qsizetype((bytes - header) / sizeof(T));
    }

    T* memory = nullptr; // of so many cells:
    qsizetype allocated = 0;
    T* cells = nullptr; // the first in use, behind those that have left the front
    qsizetype room = 0; // cells that there is memory for from there on
    int count = 0;
};
