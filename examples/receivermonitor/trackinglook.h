#pragma once

#include "bitdataarray.h"
#include "look.h"
#include "xydataset.h"

#include <QColor>

/**
 * The look of a satellite's row: a bold line while the satellite is in use, a thin one while it is
 * only tracked, none while it is not.
 *
 * The first of these is the y column of the data set, of bits; the look holds a reference on the
 * other, which must be as long.
 */
class TrackingLook : public Look
{
public:
    enum State : int { NotTracked, Tracked, InUse };

    TrackingLook(XYDataSet* owner, BitDataArray const* inUse, BitDataArray* tracked,
                 QColor const& color)
        : Look(owner, color, SYMBOL_NONE, Qt::SolidLine, boldThickness)
        , m_inUse(inUse)
        , m_tracked(tracked)
        , m_entries{{color, SYMBOL_NONE, Qt::NoPen, thinThickness},
                    {color, SYMBOL_NONE, Qt::SolidLine, thinThickness},
                    {color, SYMBOL_NONE, Qt::SolidLine, boldThickness}}
    {
        m_tracked->addReference();
    }
    ~TrackingLook() override { m_tracked->removeReference(); }

    State stateOf(int index) const
    {
        if (m_inUse->getBoolValue(index))
            return InUse;
        return m_tracked->getBoolValue(index) ? Tracked : NotTracked;
    }

    bool isChanged(int index) override
    {
        return index <= 0 || stateOf(index) != stateOf(index - 1);
    }
    Entry getApplicableLookEntry(int index) override
    {
        bool const isCell = index >= 0 && index < m_inUse->dataSize();
        return m_entries[isCell ? stateOf(index) : NotTracked];
    }

private:
    static constexpr int thinThickness = 1; // pixels
    static constexpr int boldThickness = 3;

    BitDataArray const* m_inUse; // the y column of the data set
    BitDataArray* m_tracked;
    Entry m_entries[3]; // by State
};
