#pragma once

#include <QVector>
#include <QtGlobal>
#include <algorithm>
#include <utility>

/**
 * The cells of a dense column: a QVector with a shorter way to append.
 *
 * QVector::append() asks each time whether the vector is shared, has a gap in front, or must grow.
 * Here the vector is sized some cells ahead, within its capacity, so that the next ones are only
 * written. It grows as it would by single appends.
 */
template<typename T> class CellVector
{
public:
    CellVector() = default;
    Q_DISABLE_COPY_MOVE(CellVector)

    int size() const { return count; }
    bool isEmpty() const { return count == 0; }
    T const* data() const { return vector.constData(); }
    T operator[](int index) const { return vector.constData()[index]; }
    T last() const { return (*this)[count - 1]; }
    /// Cells that there is memory for.
    qsizetype capacity() const { return vector.capacity(); }

    void set(int index, T value) { vector[index] = value; }
    /// Whether the next cell only needs to be written.
    bool hasRoom() const { return count < room; }
    void appendInRoom(T value) { spare[count++] = value; }
    void append(T value)
    {
        if (hasRoom())
            appendInRoom(value);
        else
            appendWithoutRoom(value);
    }
    /// Room for @p added more cells, which must be written.
    T* extend(int added)
    {
        int const before = count;
        resizeTo(count + added);
        return vector.data() + before;
    }
    void remove(int first, int removed)
    {
        resizeTo(count);
        vector.remove(first, removed);
        count = int(vector.size());
        hasGap = hasGap || removed > 0;
    }
    void squeeze()
    {
        resizeTo(count);
        vector.squeeze();
    }
    void assign(QVector<T> cells)
    {
        vector = std::move(cells);
        count = int(vector.size());
        room = 0;
        hasGap = false;
    }

private:
    static constexpr qsizetype cellsAhead = 64;

    void resizeTo(int size)
    {
        vector.resize(size);
        count = size;
        room = 0;
    }
    Q_NEVER_INLINE void appendWithoutRoom(T value)
    {
        resizeTo(count);
        vector.append(value);
        ++count;
        if (hasGap) // in front, so that what the capacity tells is not all behind the cells
            return;
        vector.resize(std::min(vector.size() + cellsAhead, vector.capacity()));
        spare = vector.data();
        room = int(vector.size());
    }

    QVector<T> vector; // of count cells and some spare ones
    T* spare = nullptr; // its first cell; valid while there is room
    int count = 0;
    int room = 0; // size of the vector if it may be written without asking, else 0
    bool hasGap = false;
};
