#pragma once

#include "zelplot_export.h"
#include <QColor>
#include <QFlags>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QVector>

class QPainter;
class QPoint;
class XYDataSet;

/// What marks a point. Any value that is not named here draws nothing.
enum E_SYMBOL : int {
    SYMBOL_NONE = 0,
    SYMBOL_DOT = 1,
    SYMBOL_PLUS = 2,
    SYMBOL_CROSS = 3,
    SYMBOL_SQUARE = 4,
    SYMBOL_TRIANGLE_DOWN = 5,
    SYMBOL_TRIANGLE_UP = 6,
    SYMBOL_TRIANGLE_LEFT = 7,
    SYMBOL_TRIANGLE_RIGHT = 8,
    SYMBOL_CIRCLE = 9,
    SYMBOL_DIAMOND = 10,
};

/**
 * How each point of a data set is drawn, and how the data set as a whole is: where a data set
 * without a y axis of its own sits, whether it is a colour bar, what a legend says about it.
 *
 * Points come one by one and change their appearance now and then, so the look keeps the changes
 * and not the points. A change is made after its point was appended. Made before the first point,
 * it applies from that one on.
 *
 * A look belongs to one data set, which owns and deletes it; it has no parent. A slot of its
 * signals must not delete or replace it.
 */
class ZELPLOT_EXPORT Look : public QObject
{
    Q_OBJECT
public:
    /// One appearance.
    struct Entry
    {
        QColor color; ///< invalid: no appearance
        E_SYMBOL symbol = SYMBOL_NONE;
        Qt::PenStyle penStyle = Qt::NoPen; ///< of the line between points
        int lineThickness = 0; ///< pixels before scaling

        friend bool operator==(Entry const& left, Entry const& right)
        {
            return left.color == right.color && left.symbol == right.symbol
                && left.penStyle == right.penStyle && left.lineThickness == right.lineThickness;
        }
        friend bool operator!=(Entry const& left, Entry const& right) { return !(left == right); }

        /// Leaves out the seed, so that legends have the same order in each run.
        friend size_t qHash(Entry const& entry, size_t /*seed*/ = 0)
        {
            auto const color = (quint32(entry.color.red()) << 16)
                + (quint32(entry.color.green()) << 8) + quint32(entry.color.blue());
            return quint32(entry.symbol) ^ quint32(entry.penStyle) ^ quint32(entry.lineThickness)
                ^ color;
        }
    };

    /// One change of appearance.
    struct IndexedEntry
    {
        int index = 0; ///< first point with this appearance; -1 if set before the first point
        Entry entry;
    };

    /// Parts of an appearance that matter to a legend text.
    enum EntryPart : int {
        EntryPartColor = 1,
        EntryPartSymbol = 2,
        EntryPartPenStyle = 4,
        EntryPartLineThickness = 8,
    };
    Q_DECLARE_FLAGS(EntryParts, EntryPart)

    /// The legend text of all appearances that agree with an entry in some parts.
    struct EntryLegendText
    {
        Entry entry;
        QFlags<EntryPart> parts;
        QString text;
    };

    /// Becomes the look of @p owner in place of the present one. The rest is the default entry.
    Look(XYDataSet* owner, QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness);
    ~Look() override;

    // What a subclass may do otherwise. Reading may update a cache, hence not const.

    /// True if a new appearance starts at point @p index; always for 0.
    virtual bool isChanged(int index);
    /// The appearance of point @p index.
    virtual Entry getApplicableLookEntry(int index);
    /// Colour of one of several parallel lines; a plain look gives all of them the point's colour.
    virtual QColor getMultiLineColor(int index, int line);
    /// The text of the most specific rule that fits, of equals the latest; empty if none fits.
    virtual QString getLookEntryLegendText(Look::Entry const& entry);
    /// Finds anew which appearances are present. The default entry counts only if it was set.
    virtual void fillPresentLookEntries();
    /// Follows the removal of the first @p numberOfPoints points.
    virtual void leftShift(int numberOfPoints);
    /// Follows the removal of each odd point; whoever thins the columns calls it.
    virtual void decimateKeepEven();
    /// Forgets all changes.
    virtual void clear();

    /// From the last point on, the appearance is @p entry.
    void changeFromLast(Look::Entry entry);
    /// The last point's appearance in another colour; nothing if it has that colour already.
    void changeFromLast(QColor color);
    void changeFromLast(QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness);
    /// Changes the appearance that applies before the first change.
    void setDefault(QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness);
    void setDefaultLineThickness(int lineThickness);

    QColor getColor(int index) { return getApplicableLookEntry(index).color; }
    E_SYMBOL getSymbol(int index) { return getApplicableLookEntry(index).symbol; }
    Qt::PenStyle getPenStyle(int index) { return getApplicableLookEntry(index).penStyle; }
    /// Pixels before scaling.
    int getLineThickness(int index) { return getApplicableLookEntry(index).lineThickness; }
    /// True if a marker line is wanted at point @p index, because its y is not that of the one
    /// before.
    bool mustDrawMarker(int index) const;
    /// True if mustDrawMarker() may be true for some point.
    bool getDrawMarkerOnYValueChange() const { return drawMarkerOnYValueChange; }
    /// The last point before the next change that is recorded; the largest int without one.
    int getEndOfAppearance(int index) const;

    QColor getDefaultColor() const { return defaultEntry.color; }
    E_SYMBOL getDefaultSymbol() const { return defaultEntry.symbol; }
    Qt::PenStyle getDefaultPenStyle() const { return defaultEntry.penStyle; }
    int getDefaultLineThickness() const { return defaultEntry.lineThickness; }

    /// Pixels across; a symbol is drawn with half of it to each side.
    void setSymbolSize(int size) { symbolSize = size; }
    int getSymbolSize() const { return symbolSize; }
    /// Symbols are drawn only where 1000 units of x span more pixels than this.
    void setSymbolDrawingThreshold(int pixels) { symbolDrawingThreshold = pixels; }
    int getSymbolDrawingThreshold() const { return symbolDrawingThreshold; }
    /// Points further apart in x are not connected. Negative: as the canvas says; NaN: no limit.
    void setHorizontalDisconnectionThreshold(double distance);
    double getHorizontalDisconnectionThreshold() const { return horizontalDisconnectionThreshold; }
    void setDrawMarkerOnYValueChange(bool draw) { drawMarkerOnYValueChange = draw; }
    void setMustHideEntryIfNoValidData(bool hide) { mustHideEntryIfNoValidDataFlag = hide; }
    bool mustHideEntryIfNoValidData() const { return mustHideEntryIfNoValidDataFlag; }
    void setUseDefaultColorInLegend(bool use) { useDefaultColorInLegendFlag = use; }
    bool useDefaultColorInLegend() const { return useDefaultColorInLegendFlag; }
    /// Whether a legend shows the entry of each legend text instead of what is present.
    void setMustIncludeAllEntriesInLegend(bool all) { mustIncludeAllEntriesInLegendFlag = all; }
    bool mustIncludeAllEntriesInLegend() const { return mustIncludeAllEntriesInLegendFlag; }
    /// Number of parallel lines that the data set is drawn as.
    int getMultiLineCount() const { return multiLineCount; }
    bool isMultiLine() const { return multiLineCount > 1; }
    /// Null if the data set has gone.
    XYDataSet* getDataSet() const;

    /// All changes, with strictly ascending indices.
    QVector<Look::IndexedEntry> getHistory() const { return history; }

    // Position of a data set that does not follow the y axis.

    /// At @p offset pixels from the top of the canvas, or if negative from the bottom.
    void setOffsettedFixedPositioned(int offset);
    /// At that fraction of the canvas height from the top; -1 leaves the place to the plot.
    void setFractionallyFixedPositioned(float fraction);
    /// For the plot, which places the data sets that leave it their place.
    void setAutoPosition(float fraction) { position = fraction; }
    /// Makes the data set a colour bar at @p offset pixels, as setOffsettedFixedPositioned() has
    /// it.
    void setColorBar(int offset);
    bool isColorBar() const { return colorBar; }
    bool isOffsetPositioned() const { return positionMode == PixelOffset; }
    bool isFractionPositioned() const { return positionMode == FractionOfHeight; }
    bool isAutoPositioned() const { return autoPositioned; }
    bool hasFixedYPosition() const { return positionMode != NotFixed; }
    /// Pixels as now scaled, negative from the bottom; 0 if not positioned by an offset.
    int getOffset() const;
    /// Pixels from the top of a canvas of that height; 0 without a fixed position.
    int getFixedYPosition(int height) const;
    /**
     * Draws the groove in which a colour bar lies, and leaves its pen in the painter.
     *
     * @param centre  its y is the middle of the bar
     * @param width   the groove goes from x = 0 to here
     */
    void drawColorBarBackground(QPainter& painter, QPoint const& centre, int width) const;

    // Legends.

    /// Adds a rule; @p parts tells which parts of @p entry it asks for. Emits nothing.
    void setLegendText(Look::Entry entry, QString text, QFlags<Look::EntryPart> parts);
    /// Adds a rule on the colour alone.
    void setLegendText(QColor color, QString text);
    /// The entry of the first rule with that text; one with an invalid colour if there is none.
    Look::Entry getLookEntryByLegendText(QString const& text) const;
    /// Those of all rules, duplicates included, or those present, as set; their order is fixed.
    QVector<Look::Entry> getLookEntriesForLegend() const;
    QSet<Look::Entry> const& getPresentLookEntries() const { return presentLookEntries; }
    /// Counts an appearance as present.
    void registerLookEntryPresence(Look::Entry entry, bool emitSignal);

    /**
     * @p a where @p fraction is 0, with the colour and thickness of @p b where it is 1, and blends
     * of these, truncated, between. Symbol, pen style and alpha are those of @p a.
     */
    static Look::Entry interpolateLookEntry(Look::Entry const& a, Look::Entry const& b,
                                            double fraction);

Q_SIGNALS:
    /// The last point, or the default, looks otherwise than before.
    void lastAppearanceChanged();
    void presentLookEntriesChanged();

protected Q_SLOTS:
    void checkAndEmitLastAppearanceChanged();

protected:
    int multiLineCount = 1;
    Entry lastEntry; // last appearance told to listeners
    bool lastEntryValid = false;
    QPointer<XYDataSet> dataSet; // null once it has gone
    Entry defaultEntry; // applies before the first row of the history

private:
    /// Where the data set sits in y.
    enum PositionMode : int {
        NotFixed = 0,
        FractionOfHeight = 1,
        PixelOffset = 2,
    };

    int pointCount() const;
    int searchApplicableIndex(int index) const;
    bool appliesUntilNextRow(int row, int index) const;
    int searchFromHint(int index) const;
    void dropRowsFrom(int index);

    QSet<Entry> presentLookEntries;
    bool mustIncludeAllEntriesInLegendFlag = false;
    QVector<EntryLegendText> legendTexts; // in order of setting
    bool useDefaultColorInLegendFlag = false;
    mutable int searchHint = -1; // row found last; the history may have shrunk since
    QVector<IndexedEntry> history;
    PositionMode positionMode = NotFixed;
    float position = 0.0F; // fraction or pixels, as the mode says
    bool autoPositioned = false;
    bool mustHideEntryIfNoValidDataFlag = true;
    bool colorBar = false;
    bool drawMarkerOnYValueChange = false;
    double horizontalDisconnectionThreshold = -1.0;
    int symbolSize = 8;
    int symbolDrawingThreshold = 0;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Look::EntryParts)
