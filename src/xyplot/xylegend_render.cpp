#include "xylegend.h"

#include "dataarray.h"
#include "look.h"
#include "looklegend.h"
#include "rounding.h"
#include "xydataset.h"
#include "xyplotcommon.h"
#include "zelplotglobals.h"

#include <QDateTime>
#include <QFontMetrics>
#include <QMessageBox>
#include <QPainter>

namespace {

/// The smallest size tried, in points, or in pixels where the font is set in these.
constexpr int smallestFontSize = 4;

/// No line of text is lower than this part of its font size, so larger fonts need not be tried.
constexpr int leastLinePartOfSize = 4;

constexpr int secondsBetweenWarnings = 60;

int sizeOf(QFont const& font)
{
    return font.pointSize() > 0 ? font.pointSize() : font.pixelSize();
}

/// Gives both fonts one size, in the unit in which the heading is set.
void setSizes(QFont& heading, QFont& text, int size)
{
    bool const inPoints = heading.pointSize() > 0;
    for (QFont* const font : {&heading, &text}) {
        if (inPoints)
            font->setPointSize(size);
        else
            font->setPixelSize(size);
    }
}

/// Takes its data sets from the list at the time of the rendering, whatever the rows on the screen.
bool isRendered(XYDataSet const& dataSet)
{
    return dataSet.visible && dataSet.yData->hasValidValues();
}

} // namespace

/// What a picture of a legend holds, and the size that it takes.
struct XYLegend::Picture
{
    QStringList headings;
    QStringList texts;
    int lines = 0;
    QFont headingFont = getPlotRenderSettings().legendTitleFont;
    QFont textFont = getPlotRenderSettings().plotTitleFont;
    QSize size;

    static int spacing(QFont const& font) { return QFontMetrics(font).lineSpacing(); }
    /// Where the text behind a sample begins.
    double textOffset() const
    {
        PlotRenderSettings_t const& settings = getPlotRenderSettings();
        return double(settings.legendSymbolWidth) + settings.legendSymbolGap + spacing(textFont);
    }

    void measure()
    {
        QFontMetrics const headingMetrics(headingFont);
        QFontMetrics const textMetrics(textFont);
        int const lineSpacing = textMetrics.lineSpacing();
        double width = 0.0;
        for (QString const& heading : qAsConst(headings))
            width = qMax(width, headingMetrics.horizontalAdvance(heading) + 2.0 * lineSpacing);
        for (QString const& text : qAsConst(texts)) {
            width = qMax(width, textMetrics.horizontalAdvance(text) + textOffset() + lineSpacing);
        }
        size = QSize(roundToPixel(width), roundToPixel(double(lineSpacing) * (lines + 1)));
    }

    /// Shrinks the fonts until the picture is no larger than @p maximum; false if none is small
    /// enough.
    bool fitInto(QSize maximum)
    {
        qint64 const largest
            = qMax(qint64(maximum.height()) * leastLinePartOfSize, qint64(smallestFontSize));
        for (int fontSize = int(qMin(qint64(sizeOf(headingFont)), largest));; --fontSize) {
            setSizes(headingFont, textFont, qMax(fontSize, 1));
            measure();
            if (size.width() <= maximum.width() && size.height() <= maximum.height())
                return true;
            if (fontSize <= smallestFontSize)
                return false;
        }
    }
};

XYLegend::Picture XYLegend::collectPicture() const
{
    Picture picture;
    if (!title.isEmpty()) {
        picture.headings.append(title);
        picture.lines = 1;
    }
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        if (!isRendered(*dataSet))
            continue;
        picture.texts.append(dataSet->name);
        ++picture.lines;
        Look* const look = dataSet->getLook();
        if (!look->isColorBar())
            continue;
        picture.headings.append(dataSet->name);
        picture.lines += 2; // the heading, and a blank line before it
        QVector<Look::Entry> const entries = look->getLookEntriesForLegend();
        for (Look::Entry const& entry : entries)
            picture.texts.append(look->getLookEntryLegendText(entry));
        picture.lines += int(entries.size());
    }
    return picture;
}

/// A stream of pictures that do not fit warns once and not again until there is a pause in it.
void XYLegend::warnThatLegendIsCropped()
{
    static QDateTime lastWarned;
    QDateTime const now = QDateTime::currentDateTime();
    bool const isDue = lastWarned.isNull() || lastWarned.secsTo(now) > secondsBetweenWarnings;
    lastWarned = now;
    if (!isDue || zelplotUserInteractionDisabled)
        return;
    QMessageBox::warning(this, tr("Timeplot legend does not fit."),
                         tr("While rendering the time plot, the legend does not fit the attributed "
                            "space. It will be partly cropped."),
                         QMessageBox::Ok);
    // Time passes while the user reads.
    lastWarned = QDateTime::currentDateTime();
}

QPixmap XYLegend::drawLegendToPixmap(QSize maximum)
{
    Picture picture = collectPicture();
    if (!picture.fitInto(maximum)) {
        QPointer<XYLegend> const self(this);
        warnThatLegendIsCropped();
        if (!self) // gone while the dialog was open
            return {};
    }
    QPixmap pixmap(picture.size.boundedTo(maximum));
    pixmap.fill(Qt::white);
    if (pixmap.isNull())
        return pixmap;
    QPainter painter(&pixmap);
    int const spacing = Picture::spacing(picture.textFont);
    int baseline = spacing / 2 + QFontMetrics(picture.textFont).ascent();
    if (!title.isEmpty()) {
        paintHeading(painter, picture, title, baseline);
        baseline += spacing;
    }
    for (int i = 0; i < dataSets->size(); ++i) {
        if (!isRendered(*dataSets->at(i)))
            continue;
        paintLine(painter, picture, createPixmap(i, Qt::white, false), dataSets->at(i)->name,
                  baseline);
        baseline += spacing;
    }
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        if (isRendered(*dataSet) && dataSet->getLook()->isColorBar())
            paintColorBar(painter, picture, dataSet, baseline);
    }
    return pixmap;
}

void XYLegend::paintHeading(QPainter& painter, Picture const& picture, QString const& heading,
                            int baseline)
{
    int const width = QFontMetrics(picture.headingFont).horizontalAdvance(heading);
    painter.setFont(picture.headingFont);
    painter.drawText((painter.viewport().width() - width) / 2, baseline, heading);
}

void XYLegend::paintLine(QPainter& painter, Picture const& picture, QPixmap const& sample,
                         QString const& text, int baseline)
{
    int const ascent = QFontMetrics(picture.textFont).ascent();
    painter.setFont(picture.textFont);
    painter.drawText(roundToPixel(picture.textOffset()), baseline, text);
    painter.drawPixmap(Picture::spacing(picture.textFont),
                       baseline - (sample.height() + ascent) / 2, sample);
}

void XYLegend::paintColorBar(QPainter& painter, Picture const& picture, XYDataSet* dataSet,
                             int& baseline)
{
    int const spacing = Picture::spacing(picture.textFont);
    baseline += spacing;
    paintHeading(painter, picture, dataSet->name, baseline);
    baseline += spacing;
    LookLegend* const legend = getColorBarLegend(dataSet);
    Look* const look = dataSet->getLook();
    QVector<Look::Entry> const entries = look->getLookEntriesForLegend();
    for (Look::Entry const& entry : entries) {
        paintLine(painter, picture, legend ? legend->createPixmap(entry, Qt::white) : QPixmap(),
                  look->getLookEntryLegendText(entry), baseline);
        baseline += spacing;
    }
}
