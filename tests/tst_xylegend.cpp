#include "colorbardrawlistener.h"
#include "librarytest.h"
#include "looklegend.h"
#include "plotstage.h"
#include "testimage.h"
#include "xylegend.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QMenu>
#include <QSignalSpy>
#include <QVBoxLayout>

class tst_XYLegend : public LibraryTest
{
    Q_OBJECT
private:
    QList<XYDataSet*> addMany(int count)
    {
        QList<XYDataSet*> dataSets;
        for (int i = 0; i < count; ++i)
            dataSets.append(stage->addToPlot(QString("set %1").arg(i)));
        return dataSets;
    }
    XYDataSet* addBar()
    {
        XYDataSet* const bar = stage->addToPlot("Quality Bar", {1.0}, 4);
        bar->getLook()->setColorBar(10);
        bar->setDrawListener(new ColorBarDrawListener(bar));
        bar->getLook()->changeFromLast(Qt::red);
        return bar;
    }
    XYLegend* addLegend(E_LEGEND_POSITION position = eLEGEND_RIGHT, QMenu* menu = nullptr)
    {
        (*stage)->addLegend(true, position, menu);
        return (*stage)->getLegend();
    }
    /// The box of a row, or, with a text, that of all or none.
    QCheckBox* box(int row, QString const& text = {})
    {
        for (auto* const found : (*stage)->getLegend()->findChildren<QCheckBox*>()) {
            if (found->text() == text && (!text.isEmpty() || row-- == 0))
                return found;
        }
        return nullptr;
    }
    void makeObjects() override { stage.emplace(); }
    void deleteObjects() override { stage.reset(); }

    std::optional<PlotStage> stage;

private Q_SLOTS:
    void rowsAndColumns();
    void allAndNoneAndARebuild();
    void burstRebuildsOnce();
    void colorBarsHaveLegends();
    void rebuildWithinASignal();
    void removalWithinASignal();
    void menuHoldsActions();
    void placesOfALegend();
    void sampleShowsTheLastAppearance();
};

void tst_XYLegend::rowsAndColumns()
{
    // Data sets listed, lines high, and the places of the last names of the columns: no heading;
    // all and none above; 32 rows in 13, for which two columns of 16 are too high and three come
    // to 10 + 2 rows each; no room, which makes one row a column.
    for (auto const& [listed, lines, places] : {std::tuple(3, 20, "2,3 "),
                                                {4, 20, "5,3 "},
                                                {30, 13, "11,3 11,7 7,11 "},
                                                {2, 0, "0,3 0,7 "}}) {
        QList<XYDataSet*> dataSets = addMany(listed);
        XYLegend legend(&dataSets, true, eLEGEND_RIGHT, nullptr,
                        lines * QFontMetrics((*stage)->font()).height(), nullptr);
        auto const* const layout = legend.findChild<QFrame*>()->findChild<QGridLayout*>();
        QString found;
        for (int column = 3; column < layout->columnCount(); column += 4) {
            int row = layout->rowCount() - 1;
            while (!layout->itemAtPosition(row, column))
                --row;
            found += QStringLiteral("%1,%2 ").arg(row).arg(column);
        }
        QCOMPARE(found, places);
    }
}

void tst_XYLegend::allAndNoneAndARebuild()
{
    QList<XYDataSet*> const dataSets = addMany(4);
    dataSets.at(2)->visible = false;
    XYLegend* const legend = addLegend();
    QSignalSpy const changed(legend, &XYLegend::dataSetVisibilityChanged);
    QVERIFY(box(0)->isChecked() && !box(2)->isChecked() && !box(0, "All")->isChecked());
    box(2)->click();
    QVERIFY(dataSets.at(2)->visible && box(0, "All")->isChecked());
    box(0, "None")->click();
    QVERIFY(std::none_of(dataSets.begin(), dataSets.end(), [](auto* d) { return d->visible; }));
    QCOMPARE(changed.size(), 5);
    box(0, "All")->click();
    QVERIFY(std::all_of(dataSets.begin(), dataSets.end(), [](auto* d) { return d->visible; }));
    // Data set 1, whose former row another one gets, is listed no more.
    dataSets.at(1)->yData->reinit();
    dataSets.at(2)->visible = false;
    legend->update();
    QVERIFY(dataSets.at(1)->visible && !dataSets.at(2)->visible);
}

void tst_XYLegend::burstRebuildsOnce()
{
    QList<XYDataSet*> const dataSets = addMany(4);
    XYDataSet* const late = stage->addToPlot("late", {});
    stage->addToPlot("shown", {})->setShowInLegendEvenIfEmpty(true);
    XYLegend const* const legend = addLegend();
    QSignalSpy const rebuilt(legend, &XYLegend::dataSetVisibilityChanged);
    for (int i = 0; i < 20; ++i)
        dataSets.at(i % 4)->getLook()->changeFromLast(QColor::fromHsv(17 * i, 255, 255));
    late->append(0.0, 1.0);
    QVERIFY(rebuilt.isEmpty() && legend->findChildren<QCheckBox*>().size() == 7);
    QTRY_COMPARE(rebuilt.size(), 1);
    QCOMPARE(legend->findChildren<QCheckBox*>().size(), 8);
}

void tst_XYLegend::colorBarsHaveLegends()
{
    addMany(1);
    XYDataSet* const bar = addBar();
    stage->addToPlot("Overall quality");
    XYLegend* const legend = addLegend();
    QCOMPARE(legend->findChildren<LookLegend*>().size(), 2);
    box(1)->click();
    QVERIFY(!legend->getColorBarLegend(bar));
}

void tst_XYLegend::rebuildWithinASignal()
{
    addMany(4);
    XYDataSet* const bar = addBar();
    XYLegend* const legend = addLegend();
    connect(legend, &XYLegend::dataSetVisibilityChanged, this, [=] {
        QSignalBlocker const blocker(legend);
        legend->update();
    });
    QPointer<QCheckBox> const own = box(0);
    QPointer<QCheckBox> const ofBar = legend->getColorBarLegend(bar)->findChild<QCheckBox*>();
    own->click();
    QVERIFY(own && !legend->isAncestorOf(own) && !legend->isAncestorOf(ofBar));
    QTRY_VERIFY(!own && !ofBar);
}

void tst_XYLegend::removalWithinASignal()
{
    addMany(4);
    XYDataSet* const bar = addBar();
    for (QString const source : {"row", "colour bar", "rebuild"}) {
        QPointer<XYLegend> const legend = addLegend();
        bool stayed = false;
        connect(legend, &XYLegend::dataSetVisibilityChanged, this, [&] {
            QTimer::singleShot(0, &stage->plot, &XYPlot::removeLegend);
            QTRY_VERIFY(!(*stage)->getLegend()); // and deletes what is due
            stayed = legend;
        });
        if (source == "rebuild")
            addLegend();
        else if (source == "row")
            box(0)->click();
        else
            legend->getColorBarLegend(bar)->findChild<QCheckBox*>()->click();
        QVERIFY2(stayed && !(*stage)->getLegend(), qPrintable(source));
        QTRY_VERIFY(!legend);
    }
}

void tst_XYLegend::menuHoldsActions()
{
    QMenu menu;
    XYDataSet* const bar = addBar();
    bar->visible = false;
    XYLegend* const legend = addLegend(eLEGEND_IN_MENU, &menu);
    QCOMPARE(menu.actions().first()->text(), QString("Quality"));
    menu.actions().first()->trigger();
    QVERIFY(bar->visible);
    // The first action still decides after a rebuild.
    legend->update();
    menu.actions().first()->trigger();
    QVERIFY(!menu.actions().first()->isChecked() && bar->visible);
}

void tst_XYLegend::placesOfALegend()
{
    addMany(1);
    XYPlot& plot = stage->plot;
    for (int const position : {0, 1, 7}) {
        plot.addLegend(true, E_LEGEND_POSITION(position), nullptr);
        XYLegend const* const legend = plot.getLegend();
        // Without a place it would come up as a window of its own.
        QCOMPARE(legend->isHidden(), position == 7);
        plot.grab();
        QRect const canvas(plot.getCanvas()->mapTo(&plot, QPoint()), plot.getCanvas()->size());
        QCOMPARE(legend->y() > canvas.bottom(), position == 0);
        QCOMPARE(legend->x() > canvas.right(), position == 1);
        plot.removeLegend();
    }
    auto* const layout = new QVBoxLayout;
    plot.setParentLayoutForLegend(layout);
    plot.addLegend(true, eLEGEND_BOTTOM, nullptr);
    plot.setLegendVisible(true);
    QVERIFY(plot.getLegend()->isHidden()); // no window of its own
    QWidget host;
    host.setLayout(layout);
    QVERIFY(!plot.getLegend()->isHidden());
}

void tst_XYLegend::sampleShowsTheLastAppearance()
{
    QList<XYDataSet*> const dataSets = addMany(2);
    Look* const look = dataSets.at(0)->getLook();
    dataSets.at(0)->append(1.0, 1.0);
    look->changeFromLast(Qt::red, SYMBOL_NONE, Qt::SolidLine, 5);
    XYLegend* const legend = addLegend();
    auto const linesHigh = [&](int index, QColor color) {
        return extentOf(legend->createPixmap(index, Qt::white, true).toImage(), color).height();
    };
    QCOMPARE(linesHigh(0, Qt::red), 5);
    look->setUseDefaultColorInLegend(true);
    QCOMPARE(linesHigh(0, Qt::blue), 5);
}

QTEST_MAIN(tst_XYLegend)
#include "tst_xylegend.moc"
