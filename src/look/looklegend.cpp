#include "looklegend.h"

#include "colorbardrawlistener.h"
#include "debugtag.h"
#include "legendsample.h"
#include "memleaktracer.h"
#include "retiredwidgets.h"
#include "xydataset.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace {

DebugTag debugTag("LookLegend");

/// The tool tips begin with this control character.
constexpr char16_t toolTipMark = 0x93;

enum Column : int {
    BoxColumn = 0,
    SampleColumn = 1,
    TextColumn = 2,
    ColumnCount = 3,
};

} // namespace

LookLegend::LookLegend(XYDataSet* legendDataSet, QWidget* parent)
    : QFrame(parent)
    , dataSet(legendDataSet)
    , name(legendDataSet->name)
    , colorBarListener(qobject_cast<ColorBarDrawListener*>(legendDataSet->getDrawListener()))
    , retiredWidgets(std::make_shared<RetiredWidgets>())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("LookLegend"));
    followLook();
    // A new look may still be under construction, so its entries are asked for later.
    connect(dataSet, &XYDataSet::lookChanged, this, [this] {
        followLook();
        updateLater();
    });
    updateTimer.setSingleShot(true);
    updateTimer.setInterval(legendUpdateDelayMs);
    connect(&updateTimer, &QTimer::timeout, this, &LookLegend::update);
    update();
}

LookLegend::~LookLegend()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("LookLegend"));
}

void LookLegend::followLook()
{
    if (look)
        disconnect(look, nullptr, this, nullptr);
    // A look that is only made here announces itself before it is returned.
    look = dataSet->getLook();
    connect(look, &Look::presentLookEntriesChanged, this, &LookLegend::update,
            Qt::UniqueConnection);
}

void LookLegend::update()
{
    removeRows();
    auto* const grid = new QGridLayout;
    grid->setSpacing(0);
    grid->setHorizontalSpacing(4);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setColumnStretch(TextColumn, 1); // boxes and samples stay together in a wide legend
    int row = 0;
    if (!name.isEmpty()) {
        auto* const title = new QLabel("<b><u>" + name + "</u></b>", this);
        grid->addWidget(title, row++, 0, 1, ColumnCount, Qt::AlignHCenter);
    }
    if (look) {
        QVector<Look::Entry> const entries = look->getLookEntriesForLegend();
        for (Look::Entry const& entry : entries)
            connectToFilter(addRow(grid, row++, entry), entry);
    }
    setLayout(grid);
}

void LookLegend::removeRows()
{
    delete layout();
    bool const inSignal
        = retiredWidgets->isSignalUnderWay() || isAncestorOf(qobject_cast<QWidget*>(sender()));
    QList<QWidget*> const rows = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* const widget : rows)
        retiredWidgets->remove(widget, inSignal);
    entryByCheckBox.clear();
}

QCheckBox* LookLegend::addRow(QGridLayout* grid, int row, Look::Entry const& entry)
{
    auto* const box = new QCheckBox(this);
    auto* const sample = new QLabel(this);
    QString const legendText = look->getLookEntryLegendText(entry);
    auto* const text = new QLabel(legendText, this);
    QString const toolTip = name.isEmpty()
        ? tr("Check or uncheck to show or hide epochs with %1.").arg(legendText)
        : tr("Check or uncheck to show or hide epochs with %1 equal to %2.").arg(name, legendText);
    box->setToolTip(QChar(toolTipMark) + toolTip);
    sample->setPixmap(createPixmap(entry, windowColor(*this), devicePixelRatioF()));
    sample->setAlignment(Qt::AlignLeft);
    text->setAlignment(Qt::AlignLeft);
    grid->addWidget(box, row, BoxColumn);
    grid->addWidget(sample, row, SampleColumn);
    grid->addWidget(text, row, TextColumn);
    return box;
}

/// Connects only after the box is set, so that a rebuild filters nothing.
void LookLegend::connectToFilter(QCheckBox* box, Look::Entry const& entry)
{
    if (!colorBarListener) {
        box->setVisible(false);
        return;
    }
    box->setChecked(!colorBarListener->isFiltered(entry));
    connect(box, &QCheckBox::toggled, this, &LookLegend::toggled);
    connect(box, &QCheckBox::toggled, colorBarListener, &ColorBarDrawListener::clearCache);
    entryByCheckBox.insert(box, entry);
}

void LookLegend::toggled(bool checked)
{
    RetiredWidgets::SignalScope const scope(*retiredWidgets);
    Look::Entry const entry = entryByCheckBox.value(qobject_cast<QCheckBox*>(sender()));
    if (colorBarListener)
        colorBarListener->filterEntry(entry, !checked);
    Q_EMIT filterChanged();
}

void LookLegend::updateLater()
{
    updateTimer.start();
}

QPixmap LookLegend::createPixmap(Look::Entry const& entry, QColor background, qreal pixelRatio)
{
    int const height = QFontMetrics(font()).height();
    QPixmap pixmap = legendLinePixmap(0, height, background, pixelRatio);
    if (pixmap.isNull())
        return pixmap;
    LegendSample sample{entry, 0.0, 0};
    if (look)
        sample.penWidth = scaledThickness(*look, entry.lineThickness);
    sample.symbolRadius = sampleSymbolRadius(entry.symbol, entry.lineThickness,
                                             double(entry.lineThickness) * 3 + 3);
    QPainter painter(&pixmap);
    paintLegendSample(painter, sample, height);
    return pixmap;
}

QString LookLegend::generateTooltipText(Look* look, QString const& title)
{
    QString text = QStringLiteral("<html><table>");
    if (!title.isEmpty())
        text += QStringLiteral("<tr><th colspan=\"2\">%1</th></tr>").arg(title);
    QVector<Look::Entry> const entries = look->getLookEntriesForLegend();
    for (Look::Entry const& entry : entries) {
        QString const box = QStringLiteral("<div style=\"font-size:small;border-style:solid; "
                                           "border-color:black;background-color:%1;\"></div>")
                                .arg(entry.color.name());
        text += QStringLiteral("<tr><td>%1</td><td>%2</td></tr>")
                    .arg(box, look->getLookEntryLegendText(entry));
    }
    return text + QStringLiteral("</table></html>");
}
