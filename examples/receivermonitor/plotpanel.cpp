#include "plotpanel.h"

#include "lineargrid.h"

#include <QDateTime>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

/// Labels inside the canvas have the colour of the lines, which must be dark enough to read.
QColor const gridColor(0x70, 0x70, 0x70);

constexpr double initialSpanMs = 30000.0;
constexpr double buffer = 0.1; // of the extent of the data

/// Pixels along the edges of a canvas. Data keeps out of the strips in which labels stand.
constexpr int leftStrip = 44;
constexpr int rightStrip = 10;
constexpr int topStrip = 10;
constexpr int bottomStrip = 64; // time labels stand upright
constexpr int dataAboveStrip = 16; // margins take in less than is asked while the data grows

/// Leaves out the labels that would be cut at an edge or stand in the corner of both axes.
template<typename Grid> class UncutLabels : public Grid
{
public:
    using Grid::Grid;

    QString getLabel(double value, int decimals) override
    {
        double const position = (value - m_lowEnd) * m_pixelsPerUnit;
        bool const fits = position >= m_reserve + m_halfLabel && position <= m_length - m_halfLabel;
        return fits ? Grid::getLabel(value, decimals) : QString();
    }

protected:
    void computeParameters(QPainter* painter, double xMin, double yMin, double xMax,
                           double yMax) override
    {
        Grid::computeParameters(painter, xMin, yMin, xMax, yMax);
        bool const vertical = Grid::getOrientation() == eVERTICAL;
        QRect const viewport = painter->viewport();
        m_length = vertical ? viewport.height() : viewport.width();
        m_lowEnd = vertical ? yMin : xMin;
        m_pixelsPerUnit = m_length / (vertical ? yMax - yMin : xMax - xMin);
        m_reserve = vertical ? bottomStrip : leftStrip;
        m_halfLabel = painter->fontMetrics().height() / 2.0;
    }

private:
    double m_lowEnd = 0.0;
    double m_pixelsPerUnit = 1.0;
    double m_length = 0.0; // pixels
    double m_reserve = 0.0;
    double m_halfLabel = 0.0;
};

/// From UTC to local time on the day of @p gnssTime; leap seconds do not matter to it.
float hoursFromUtc(double gnssTime)
{
    constexpr qint64 gnssStartMs = 315964800000; // in Unix time
    constexpr float secondsPerHour = 3600.0F;
    QDateTime const moment = QDateTime::fromMSecsSinceEpoch(qint64(gnssTime) + gnssStartMs);
    return float(moment.offsetFromUtc()) / secondsPerHour;
}

QString captionOf(QString const& title, QVector<ColorName> const& colors)
{
    QString caption = QStringLiteral("<b>%1</b>").arg(title.toHtmlEscaped());
    for (ColorName const& color : colors) {
        caption += QStringLiteral("&nbsp;&nbsp; <span style=\"color:%1\">&#9632;</span>&nbsp;%2")
                       .arg(color.color.name(), color.name.toHtmlEscaped());
    }
    return caption;
}

} // namespace

PlotPanel::PlotPanel(Content const& content, TimeAxis const& axis, QWidget* parent)
    : QWidget(parent)
    , m_dataSets(content.dataSets)
    , m_canvas(new XYCanvas(&m_dataSets, &m_markers, &m_ellipses, &m_crosses, true, this))
    , m_timeGrid(new UncutLabels<LinearTimeGrid>(short(axis.leapSeconds), eHORIZONTAL, this))
{
    auto* const caption = new QLabel(captionOf(content.title, content.colors), this);
    caption->setWordWrap(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(caption);
    layout->addWidget(m_canvas, 1);

    m_timeGrid->utcOffset = hoursFromUtc(axis.start);
    m_timeGrid->setGridColor(gridColor);
    m_canvas->setGrid(eHORIZONTAL, m_timeGrid, false);
    auto* const valueGrid = new UncutLabels<LinearGrid>(eVERTICAL, this);
    valueGrid->setGridColor(gridColor);
    if (!content.hasValueLabels) {
        valueGrid->setLabelType(eNO_LABELS);
        valueGrid->setGridLinesHidden(true);
    }
    m_canvas->setGrid(eVERTICAL, valueGrid, false);

    m_canvas->setInitialDataBounds(
        Bounds{axis.start, axis.start + initialSpanMs, 0.0, content.leastValueExtent});
    // The whole log stays in view, and its labels left of the data.
    m_canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, false);
    // Room for half a minute ahead of the newest epoch, so that an early replay does not redraw at
    // each; none to the left, where nothing arrives.
    m_canvas->setExtensionBufferParameters(0.0, initialSpanMs, 0.0, 0.0, 0.0, buffer, buffer,
                                           buffer);
    m_canvas->addCustomHorizontalDataBoundsVector(axis.extent);
    m_canvas->setViewportMargin(leftStrip, rightStrip, bottomStrip + dataAboveStrip, topStrip);
}

PlotPanel::~PlotPanel()
{
    // The canvas reads the lists of this panel.
    delete m_canvas;
}

void PlotPanel::showNewData()
{
    // The first measures the strips of the labels in the extent of before, the second in its own.
    m_canvas->updateBounds();
    m_canvas->updateBounds();
    m_canvas->drawNewPointsOnBackGround();
}

void PlotPanel::startAnew()
{
    m_canvas->updateBounds();
    m_canvas->fullRepaint();
}

void PlotPanel::setTimeType(ETimeType timeType)
{
    m_timeGrid->changeTimeFormat(timeType);
    m_canvas->fullRepaint();
}

void PlotPanel::useForFinishedData()
{
    m_canvas->adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
    m_canvas->setContinueBackgroundDrawingUntilFinished(true);
}
