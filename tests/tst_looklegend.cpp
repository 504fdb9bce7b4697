#include "colorbardrawlistener.h"
#include "librarytest.h"
#include "looklegend.h"
#include "plotstage.h"
#include "xyplotcommon.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalSpy>

class tst_LookLegend : public LibraryTest
{
    Q_OBJECT
private:
    /// A bar of red, which is "bad", and green, which is "good".
    XYDataSet* addBar(QString const& name, bool withListener)
    {
        XYDataSet* const bar = stage->add(name, {1.0, 2.0}, 4);
        Look* const look = bar->getLook();
        look->setColorBar(10);
        look->setLegendText(Qt::red, "bad");
        look->setLegendText(Qt::green, "good");
        for (QColor const color : {Qt::red, Qt::green}) {
            look->changeFromLast(color);
            bar->append(3.0, 1.0);
        }
        if (withListener)
            bar->setDrawListener(new ColorBarDrawListener(bar));
        return bar;
    }
    void makeObjects() override { stage.emplace(); }
    void deleteObjects() override { stage.reset(); }

    std::optional<DataSetStage> stage;

private Q_SLOTS:
    void rowsFollowTheLook();
    void boxesFilter();
    void partnersMayGo();
    void sampleShowsTheAppearance();
};

/// Texts of all labels, top to bottom, of those that show no sample.
static QStringList texts(QWidget const& legend)
{
    QStringList found;
    for (auto const* const label : legend.findChildren<QLabel*>()) {
        if (label->pixmap().isNull())
            found.append(label->text());
    }
    return found;
}

static QCheckBox* boxWithTip(QWidget const& legend, QString const& part)
{
    for (auto* const box : legend.findChildren<QCheckBox*>()) {
        if (box->toolTip().contains(part))
            return box;
    }
    return nullptr;
}

void tst_LookLegend::rowsFollowTheLook()
{
    XYDataSet* const bar = addBar("State %2", false);
    LookLegend legend(bar, nullptr);
    QStringList rows = texts(legend);
    QCOMPARE(rows.takeFirst(), QString("<b><u>State %2</u></b>"));
    rows.sort();
    QCOMPARE(rows, (QStringList{"bad", "good"}));
    QCOMPARE(boxWithTip(legend, "bad")->toolTip(),
             QString(QChar(0x93))
                 + "Check or uncheck to show or hide epochs with State %2 equal to bad.");
    QVERIFY(boxWithTip(legend, "bad")->isHidden());

    bar->getLook()->setLegendText(Qt::blue, "new");
    bar->getLook()->changeFromLast(Qt::blue);
    QVERIFY(texts(legend).contains("new"));
    // Another look has no entry yet.
    new Look(bar, Qt::gray, SYMBOL_NONE, Qt::SolidLine, 1);
    QCOMPARE(legend.getLook(), bar->getLook());
    QTRY_COMPARE(texts(legend).size(), 1);
}

void tst_LookLegend::boxesFilter()
{
    XYDataSet* const bar = addBar("", true);
    auto* const listener = static_cast<ColorBarDrawListener*>(bar->getDrawListener());
    Look::Entry const bad = bar->getLook()->getApplicableLookEntry(1);
    LookLegend legend(bar, nullptr);
    QPointer<QCheckBox> const box = boxWithTip(legend, "epochs with bad.");
    listener->drawingDataPoint(1, 5);
    QStringList seen;
    connect(&legend, &LookLegend::filterChanged, this, [&] {
        seen += listener->isFiltered(bad) ? "off" : "on";
        seen += QString::number(listener->excludeDataPointsAtViewportX(5));
    });
    // The box outlives a rebuild within its own signal.
    connect(&legend, &LookLegend::filterChanged, &legend, &LookLegend::update);
    box->click();
    QVERIFY(box && box->isHidden() && !legend.isAncestorOf(box));
    // The marks are cleared after the change is told.
    seen += QString::number(listener->excludeDataPointsAtViewportX(5));
    QVERIFY(!boxWithTip(legend, "epochs with bad.")->isChecked());
    QVERIFY(boxWithTip(legend, "epochs with good.")->isChecked());
    boxWithTip(legend, "epochs with bad.")->click();
    QCOMPARE(seen, (QStringList{"off", "1", "0", "on", "0"}));
    QTRY_VERIFY(!box);
}

void tst_LookLegend::partnersMayGo()
{
    XYDataSet* const bar = addBar("", true);
    LookLegend legend(bar, nullptr);
    delete bar->getDrawListener();
    boxWithTip(legend, "bad")->click();
    stage.reset();
    legend.update();
    QVERIFY(!legend.getLook() && texts(legend).isEmpty());
}

void tst_LookLegend::sampleShowsTheAppearance()
{
    LookLegend legend(addBar("", false), nullptr);
    int const height = QFontMetrics(legend.font()).height();
    auto const sample = [&](Look::Entry const& entry, qreal ratio) {
        QImage const image = legend.createPixmap(entry, Qt::white, ratio).toImage();
        int inked = 0;
        for (int y = 0; y < image.height(); ++y)
            inked += image.pixel(2, y) == qRgb(255, 0, 0);
        return std::pair(image.size(), inked);
    };
    // As thick as the bar, also where points have no line; sizes count logical pixels.
    QCOMPARE(sample({Qt::red, SYMBOL_NONE, Qt::NoPen, 6}, 1.0), std::pair(QSize(19, height), 6));
    QCOMPARE(sample({Qt::red, SYMBOL_NONE, Qt::SolidLine, 6}, 2.0),
             std::pair(QSize(38, 2 * height), 12));
    // A cross of thickness 1 reaches six pixels to each side of (7, h / 2).
    QImage const cross
        = legend.createPixmap({Qt::red, SYMBOL_CROSS, Qt::SolidLine, 1}, Qt::white).toImage();
    QCOMPARE(cross.pixel(1, height / 2 - 6), qRgb(255, 0, 0));
    QCOMPARE(cross.pixel(0, height / 2 - 7), qRgb(255, 255, 255));

    plotRenderSettings.push(getPlotRenderSettings());
    plotRenderSettings.top().legendSymbolWidth = std::numeric_limits<int>::max();
    QPixmap const endless = legend.createPixmap({Qt::red, SYMBOL_DOT, Qt::DashLine, 1}, Qt::white);
    plotRenderSettings.pop();
    QVERIFY(endless.isNull());
}

QTEST_MAIN(tst_LookLegend)
#include "tst_looklegend.moc"
