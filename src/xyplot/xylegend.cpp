#include "xylegend.h"

#include "barname.h"
#include "dataarray.h"
#include "debugtag.h"
#include "legendsample.h"
#include "look.h"
#include "looklegend.h"
#include "memleaktracer.h"
#include "retiredwidgets.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QAction>
#include <QBoxLayout>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QSignalMapper>
#include <algorithm>

namespace {

DebugTag debugTag("XYLegend");

constexpr int layoutSpacing = 20; // pixels

/// Shorter lists are ticked faster by hand.
constexpr int rowsWorthAllAndNone = 4;

/// Grid columns of a block of rows, from its base on.
enum Column : int {
    SpacerColumn = 0,
    BoxColumn = 1,
    SampleColumn = 2,
    TextColumn = 3,
};
constexpr int checkableBlockStep = 4;
/// One less than the columns in use: the spacer stands in the column of the texts before it.
constexpr int plainBlockStep = 3;
constexpr int headingSpan = 3;

QBoxLayout::Direction directionOf(E_LEGEND_POSITION position)
{
    return position == eLEGEND_RIGHT ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
}

bool isShownAsColorBar(XYDataSet* dataSet)
{
    return dataSet->visible
        && (dataSet->getLook()->isColorBar() || dataSet->name == QLatin1String("Overall quality"));
}

} // namespace

XYLegend::XYLegend(QList<XYDataSet*>* plotDataSets, bool withCheckBoxes, E_LEGEND_POSITION place,
                   QMenu* targetMenu, int columnHeight, QWidget* parent)
    : QWidget(parent)
    , menu(targetMenu)
    , dataSets(plotDataSets)
    , checkable(withCheckBoxes)
    , signalMapper(new QSignalMapper)
    , position(place)
    , frameLayout(new QVBoxLayout)
    , maxHeight(columnHeight)
    , retiredWidgets(std::make_shared<RetiredWidgets>())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYLegend"));
    connect(signalMapper, &QSignalMapper::mappedInt, this, &XYLegend::toggled);
    updateTimer.setSingleShot(true);
    updateTimer.setInterval(legendUpdateDelayMs);
    connect(&updateTimer, &QTimer::timeout, this, &XYLegend::update);
    if (!isInMenu()) {
        mainLayout = new QBoxLayout(directionOf(position));
        mainLayout->setSpacing(layoutSpacing);
        colorBarLayout = new QBoxLayout(directionOf(position));
        colorBarLayout->setSpacing(layoutSpacing);
        mainLayout->addLayout(frameLayout);
        mainLayout->addLayout(colorBarLayout);
        setLayout(mainLayout);
    }
    update();
}

XYLegend::~XYLegend()
{
    // Legends among them hold on to it in turn.
    retiredWidgets->deleteAll();
    delete frame;
    delete signalMapper;
    if (isInMenu()) {
        delete frameLayout;
        qDeleteAll(actions);
    }
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYLegend"));
}

void XYLegend::retire()
{
    // Before the signal is over the list may go, and another legend come that fills the menu.
    dataSets = &noDataSets;
    menu = nullptr;
    disconnect(this, &XYLegend::dataSetVisibilityChanged, nullptr, nullptr);
    retiredWidgets->remove(this, retiredWidgets->isSignalUnderWay());
}

void XYLegend::update()
{
    if (isInMenu())
        fillMenu();
    else
        rebuildFrame();
    if (allCheckBox && noneCheckBox)
        toggled(2); // whatever the index, for what follows: the two boxes and the signal
    updateColorBarLegends();
}

void XYLegend::updateLater()
{
    updateTimer.start();
}

void XYLegend::fillMenu()
{
    if (!menu)
        return;
    menu->clear();
    for (int i = 0; i < dataSets->size(); ++i) {
        XYDataSet const* const dataSet = dataSets->at(i);
        QIcon const icon(createPixmap(i, windowColor(*this), false, devicePixelRatioF()));
        auto* const action = new QAction(icon, nameWithoutBar(dataSet->name), parent());
        if (checkable) {
            action->setCheckable(true);
            action->setChecked(dataSet->visible);
            connect(action, &QAction::toggled, signalMapper, qOverload<>(&QSignalMapper::map));
            signalMapper->setMapping(action, i);
        }
        actions.append(action);
        menu->addAction(action);
    }
}

void XYLegend::rebuildFrame()
{
    removeFrame();
    frame = new QFrame;
    gridLayout = new QGridLayout(frame);
    gridLayout->setSpacing(0);
    gridLayout->setContentsMargins(0, 0, 0, 0);

    QList<int> const listed = listedDataSets();
    int headerRows = 0;
    addHeading(headerRows);
    if (checkable && listed.size() >= rowsWorthAllAndNone)
        addAllAndNone(headerRows);
    addRows(listed, headerRows);

    frameLayout->addWidget(frame);
    frame->setFrameShadow(QFrame::Raised);
    mainLayout->addStretch(0);
}

void XYLegend::removeFrame()
{
    if (frame)
        removeWidget(frame);
    frame = nullptr;
    allCheckBox = nullptr;
    noneCheckBox = nullptr;
    checkBoxes.clear();
    rowOfDataSet.clear();
}

void XYLegend::removeWidget(QWidget* widget)
{
    bool const hearsItsSignal = widget->isAncestorOf(qobject_cast<QWidget*>(sender()));
    retiredWidgets->remove(widget, retiredWidgets->isSignalUnderWay() || hearsItsSignal);
}

QList<int> XYLegend::listedDataSets() const
{
    QList<int> listed;
    for (int i = 0; i < dataSets->size(); ++i) {
        XYDataSet const* const dataSet = dataSets->at(i);
        if (dataSet->yData->hasValidValues() || dataSet->getShowInLegendEvenIfEmpty())
            listed.append(i);
    }
    return listed;
}

void XYLegend::addHeading(int& row)
{
    if (title.isEmpty())
        return;
    auto* const heading
        = new QLabel(QStringLiteral("<center><b><u>%1</u></b></center>").arg(title), frame);
    gridLayout->addWidget(heading, row++, 0, 1, headingSpan);
}

void XYLegend::addAllAndNone(int& row)
{
    allCheckBox = addSpecialBox(tr("All"), row++);
    noneCheckBox = addSpecialBox(tr("None"), row++);
}

QCheckBox* XYLegend::addSpecialBox(QString const& text, int row)
{
    auto* const box = new QCheckBox(text, frame);
    gridLayout->addWidget(box, row, 0, 1, headingSpan);
    connect(box, &QCheckBox::stateChanged, this, &XYLegend::allOrNoneCBToggled);
    return box;
}

/// What is left over when the rows are dealt out makes every column longer.
int XYLegend::rowsPerColumn(int headerRows) const
{
    int const total = headerRows + int(dataSets->size());
    int const maxRows = maxHeight / qMax(QFontMetrics(font()).height(), 1);
    if (maxRows >= total)
        return qMax(maxRows, 1);
    // One row a column is as low as it gets, however little room there is.
    for (int columns = 2; columns < total; ++columns) {
        int const rows = total / columns + total % columns;
        if (rows < maxRows)
            return rows;
    }
    return 1;
}

void XYLegend::addRows(QList<int> const& listed, int headerRows)
{
    int const columnRows = rowsPerColumn(headerRows);
    int row = headerRows;
    int base = 0;
    for (int k = 0; k < listed.size(); ++k) {
        if (k > 0 && (k + headerRows) % columnRows == 0) {
            base += checkable ? checkableBlockStep : plainBlockStep;
            row = 0;
        }
        // Keeps two blocks of rows apart.
        if (base > 0) {
            auto* const spacer = new QLabel(QStringLiteral("       "), frame);
            gridLayout->addWidget(spacer, row, base + SpacerColumn);
        }
        int const i = listed.at(k);
        rowOfDataSet.insert(i, k);
        if (checkable)
            addCheckBox(i, row, base + BoxColumn);
        addSampleAndName(i, row, base);
        ++row;
    }
}

void XYLegend::addCheckBox(int dataSetIndex, int row, int column)
{
    auto* const box = new QCheckBox(frame);
    checkBoxes.append(box);
    gridLayout->addWidget(box, row, column);
    box->setChecked(dataSets->at(dataSetIndex)->visible);
    connect(box, &QCheckBox::toggled, signalMapper, qOverload<>(&QSignalMapper::map));
    signalMapper->setMapping(box, dataSetIndex);
}

void XYLegend::addSampleAndName(int dataSetIndex, int row, int base)
{
    auto* const sample = new QLabel(frame);
    sample->setPixmap(createPixmap(dataSetIndex, windowColor(*this), false, devicePixelRatioF()));
    sample->setAlignment(Qt::AlignLeft);
    gridLayout->addWidget(sample, row, base + SampleColumn);
    auto* const text = new QLabel(dataSets->at(dataSetIndex)->name, frame);
    text->setAlignment(Qt::AlignLeft);
    gridLayout->addWidget(text, row, base + TextColumn);
}

void XYLegend::updateColorBarLegends()
{
    auto const legends = findChildren<LookLegend*>();
    for (LookLegend* const legend : legends)
        removeWidget(legend);
    if (!colorBarLayout)
        return;
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        if (!isShownAsColorBar(dataSet))
            continue;
        auto* const legend = new LookLegend(dataSet, nullptr);
        legend->retiredWidgets = retiredWidgets;
        colorBarLayout->addWidget(legend);
        connect(legend, &LookLegend::filterChanged, this, &XYLegend::dataSetVisibilityChanged);
    }
}

LookLegend* XYLegend::getColorBarLegend(XYDataSet* dataSet)
{
    auto const legends = findChildren<LookLegend*>();
    for (LookLegend* const legend : legends) {
        if (legend->getLook() == dataSet->getLook())
            return legend;
    }
    return nullptr;
}

void XYLegend::toggled(int i)
{
    RetiredWidgets::SignalScope const scope(*retiredWidgets);
    if (isInMenu()) {
        if (i < dataSets->size() && i < actions.size() && actions.at(i))
            dataSets->at(i)->visible = actions.at(i)->isChecked();
    } else if (i < dataSets->size() && rowOfDataSet.contains(i)) {
        XYDataSet* const dataSet = dataSets->at(i);
        dataSet->visible = checkBoxes.at(rowOfDataSet.value(i))->isChecked();
        if (dataSet->getLook()->isColorBar())
            updateColorBarLegends();
    }
    if (allNoneSyncEnabled)
        updateAllAndNone();
    Q_EMIT dataSetVisibilityChanged();
}

void XYLegend::updateAllAndNone()
{
    if (!allCheckBox || !noneCheckBox)
        return;
    auto const isChecked = [](QCheckBox const* box) { return box->isChecked(); };
    allCheckBox->setChecked(std::all_of(checkBoxes.cbegin(), checkBoxes.cend(), isChecked));
    if (noneCheckBox) // a slot of the other may have led to a rebuild with fewer rows
        noneCheckBox->setChecked(std::none_of(checkBoxes.cbegin(), checkBoxes.cend(), isChecked));
}

void XYLegend::allOrNoneCBToggled()
{
    if (!allCheckBox || !noneCheckBox)
        return;
    RetiredWidgets::SignalScope const scope(*retiredWidgets);
    if (sender() == allCheckBox && allCheckBox->isChecked())
        setAllBoxes(noneCheckBox, true);
    else if (sender() == noneCheckBox && noneCheckBox->isChecked())
        setAllBoxes(allCheckBox, false);
}

void XYLegend::setAllBoxes(QCheckBox* other, bool checked)
{
    allNoneSyncEnabled = false;
    other->setChecked(false);
    // By index, since each box tells its change, upon which the rows may be made anew.
    for (int row = 0; row < checkBoxes.size(); ++row)
        checkBoxes.at(row)->setChecked(checked);
    allNoneSyncEnabled = true;
}

QPixmap XYLegend::createPixmap(int index, QColor background, bool withText, qreal pixelRatio)
{
    XYDataSet* const dataSet = dataSets->at(index);
    Look* const look = dataSet->getLook();
    QFontMetrics const metrics(font());
    int const height = metrics.height();
    int const textWidth = withText ? metrics.horizontalAdvance(dataSet->name) : 0;
    QPixmap pixmap = legendLinePixmap(textWidth, height, background, pixelRatio);
    if (pixmap.isNull())
        return pixmap;

    int const last = int(dataSet->yData->dataSize()) - 1;
    Look::Entry entry{look->getDefaultColor(), look->getDefaultSymbol(), look->getDefaultPenStyle(),
                      look->getDefaultLineThickness()};
    if (last >= 0) {
        entry = look->getApplicableLookEntry(last);
        if (look->useDefaultColorInLegend())
            entry.color = look->getDefaultColor();
    }
    double const penWidth = scaledThickness(*look, entry.lineThickness);
    int const symbolRadius = look->getSymbolSize() / 2;
    int const radius = sampleSymbolRadius(entry.symbol, penWidth, symbolRadius);

    QPainter painter(&pixmap);
    painter.setFont(font());
    paintLegendSample(painter, {entry, penWidth, radius}, height);
    if (withText) {
        PlotRenderSettings_t const& settings = getPlotRenderSettings();
        painter.setPen(palette().brush(QPalette::Current, QPalette::WindowText).color());
        double const x = double(settings.legendSymbolWidth) + settings.legendSymbolGap;
        painter.drawText(QPointF(x, height - metrics.descent()), dataSet->name);
    }
    return pixmap;
}
