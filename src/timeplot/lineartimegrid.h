#pragma once

#include "lineargrid.h"
#include "zelplot_export.h"
#include <QDateTime>

/// How a time axis shows time.
enum ETimeType : int {
    eSHOW_GNSS = 0, ///< time of day of GNSS time, without leap seconds
    eSHOW_UTC = 1, ///< time of day
    eSHOW_LOCAL = 2, ///< time of day
    eSHOW_TOW = 3, ///< seconds since the start of the GNSS week
    eSHOW_SECONDS = 4, ///< seconds since the start of GNSS time
    eSHOW_EOL = 5 ///< end of the list, no choice
};

/// Name of the time scale behind a way of showing time.
struct TimeTypeName_t
{
    ETimeType timeType;
    char const* name;
    bool onGnssScale;
};

/// One row for each ETimeType, in its order.
inline constexpr TimeTypeName_t TIME_TYPE_NAME_TABLE[] = {
    {eSHOW_GNSS, "GNSS", true}, {eSHOW_UTC, "UTC", false},     {eSHOW_LOCAL, "Local", false},
    {eSHOW_TOW, "GNSS", true},  {eSHOW_SECONDS, "GNSS", true}, {eSHOW_EOL, "EoL", false},
};

/**
 * The grid of a time axis, whose values are milliseconds of GNSS time since 1980-01-06 00:00:00.
 *
 * Ticks stand where those of a LinearGrid stand, on round numbers of milliseconds; only their
 * texts differ. Values are rounded to whole milliseconds; negative ones give valid but useless
 * texts.
 */
class ZELPLOT_EXPORT LinearTimeGrid : public LinearGrid
{
    Q_OBJECT
public:
    /// Leap seconds that are not known.
    static constexpr short unknownDeltaLS = -128;
    /// An offset from UTC that is not known.
    static constexpr float unknownUtcOffset = -100.0F;

    LinearTimeGrid(short leapSeconds, E_ORIENTATION_TYPE axis, QWidget* parent);
    ~LinearTimeGrid() override;

    /// The text of a tick in the present form. @p decimals is ignored: they follow from the value.
    QString getLabel(double value, int decimals) override;

    /**
     * Date and time that a value stands for in the present form, labelled as UTC whatever it is.
     *
     * Null for UTC and local time while the leap seconds are not known.
     */
    QDateTime getDateTime(double value) const;

    /// Hours from UTC to local time: utcOffset or, if that is not known, the whole hours of the
    /// host's time zone at that moment.
    float getLocalTimeOffsetHours(double value) const;

    /// These three are for all to read and write; a change shows with the canvas's next background.
    ETimeType timeType = eSHOW_GNSS;
    short deltaLS; ///< GNSS time less UTC in seconds, or unknownDeltaLS
    float utcOffset = unknownUtcOffset; ///< hours from UTC to local time, or unknownUtcOffset

public Q_SLOTS:
    /// Stores the form; does not repaint the canvas.
    void changeTimeFormat(ETimeType newTimeType);
};
