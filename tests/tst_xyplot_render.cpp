#include "librarytest.h"
#include "plotstage.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"

class tst_XYPlotRender : public LibraryTest
{
    Q_OBJECT
private:
    void makeObjects() override
    {
        zelplotUserInteractionDisabled = true;
        stage.emplace();
        settings = getDefaultPlotRenderSettings();
    }
    void deleteObjects() override { stage.reset(); }
    QImage render(QSize size, bool withLegend = false, QString const& title = {})
    {
        QPixmap const picture = (*stage)->renderToPixmap(size, settings, withLegend, true, title);
        stackGrowth = plotRenderSettings.size() - 1;
        plotRenderSettings.resize(1);
        return picture.toImage();
    }
    /// Left edge of the frame of the canvas, a black line over some height.
    static int leftOfFrame(QImage const& picture)
    {
        int const middle = picture.height() / 2;
        int left = 0;
        while (left < picture.width() - 1
               && (picture.pixel(left, middle) != qRgb(0, 0, 0)
                   || picture.pixel(left, middle - 9) != qRgb(0, 0, 0)))
            ++left;
        return left;
    }
    std::optional<PlotStage> stage;
    PlotRenderSettings_t settings;
    qsizetype stackGrowth = 0;

private Q_SLOTS:
    void anySizeGivesThatSize();
    void canvasTakesWhatTheRestLeaves();
    void settingsAreThoseOfThePicture();
    void anotherScaleWidthStartsAnew();
    void legendFitsOrIsCut();
};

void tst_XYPlotRender::anySizeGivesThatSize()
{
    stage->addToPlot("data", {1.0, 2.0, 3.0});
    (*stage)->getCanvas()->updateBounds();
    (*stage)->addLegend(true, eLEGEND_RIGHT, nullptr);
    (*stage)->setAxisTitle(eHORIZONTAL, "rotated");
    (*stage)->setAxisTitle(eVERTICAL, "upright");
    for (QSize const size : {QSize(1, 1), QSize(20000, 100), QSize(3, 400), QSize(1000, 600)})
        QCOMPARE(render(size, true, "some title").size(), size);
    QVERIFY(render(QSize(0, 0), true, "title").isNull());
    QVERIFY(render(QSize(-5, 10)).isNull());
}

void tst_XYPlotRender::canvasTakesWhatTheRestLeaves()
{
    stage->addToPlot("data", {0.0, 50.0});
    XYCanvas* const canvas = (*stage)->getCanvas();
    canvas->setFixedDataBounds({0.0, 1.0, 0.0, 50.0});
    canvas->zoomFull();
    for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL})
        canvas->getGrid(axis)->setGridLinesHidden(true);
    (*stage)->resize(300, 200);
    (*stage)->grab();
    int const scaleWidth = (*stage)->getYScale()->minimumWidth();
    int const scaleHeight = (*stage)->getXScale()->minimumHeight();

    (*stage)->setAxisTitle(eVERTICAL, "upright");
    int const titleHeight = int(1.5 * (*stage)->getAxisTitleFontHeight());
    QImage const picture = render({500, 300});
    QCOMPARE(leftOfFrame(picture), scaleWidth);
    QCOMPARE(picture.pixel(499, 150), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(400, 299), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(400, titleHeight + scaleHeight), qRgb(0, 0, 0));
    QCOMPARE(render({500, 300}), picture);
    QCOMPARE((*stage)->getYScale()->minimumWidth(), scaleWidth);
    QCOMPARE(stackGrowth, 0);

    // The title of the picture takes its strip below the canvas.
    QImage const titled = render({500, 300}, false, "title");
    int const titleFont = QFontMetrics(settings.plotTitleFont).height();
    QCOMPARE(titled.pixel(400, 299 - titleFont - 2 * int(0.3 * titleFont)), qRgb(0, 0, 0));
    // With a legend, at most a third of the width is gone.
    (*stage)->addLegend(true, eLEGEND_RIGHT, nullptr);
    QImage const withLegend = render({500, 300}, true);
    int right = 499;
    while (withLegend.pixel(right, 250) != qRgb(0, 0, 0))
        --right;
    QVERIFY(right > 330 && right < 470);
}

void tst_XYPlotRender::settingsAreThoseOfThePicture()
{
    stage->addToPlot("line", {5.0, 5.0, 5.0});
    XYCanvas* const canvas = (*stage)->getCanvas();
    canvas->setFixedDataBounds({0.0, 2.0, 0.0, 10.0});
    canvas->zoomFull();
    auto const thickness = [&](QImage const& picture) {
        double sum = 0.0; // also of half-covered pixels
        for (int y = 0; y < picture.height(); ++y) {
            QColor const color = picture.pixelColor(picture.width() / 2 + 30, y);
            sum += (color.blue() - color.red()) / 255.0;
        }
        return qRound(sum);
    };
    QCOMPARE(thickness(render({400, 300})), 1);
    settings.lineThicknessFactor = 3; // with the canvas at the size that it had
    QCOMPARE(thickness(render({400, 300})), 3);
    settings.majorTickLength = 40;
    QVERIFY(leftOfFrame(render({400, 300})) >= 50);
    (*stage)->resize(400, 300);
    QCOMPARE(thickness((*stage)->grab().toImage()), 1);
}

void tst_XYPlotRender::anotherScaleWidthStartsAnew()
{
    struct WidthChangingGrid : LinearGrid
    {
        using LinearGrid::LinearGrid;
        QString getLabel(double, int) override { return QString(++calls, u'9'); }
        int calls = 0;
    };
    stage->addToPlot("data", {1.0});
    auto* const grid = new WidthChangingGrid(eVERTICAL, &stage->plot);
    grid->setLabelType(eSCALE_LABELS);
    (*stage)->getCanvas()->setGrid(eVERTICAL, grid, false);
    QCOMPARE(render({600, 300}).size(), QSize(600, 300));
    QCOMPARE(stackGrowth, 3); // then the width stands
}

void tst_XYPlotRender::legendFitsOrIsCut()
{
    stage->addToPlot("shown");
    stage->addToPlot("hidden")->visible = false;
    stage->addToPlot("empty", {});
    XYDataSet* const bar = stage->addToPlot("bar", {1.0}, 4);
    bar->getLook()->setColorBar(10);
    bar->getLook()->setLegendText(Qt::red, "state");
    bar->getLook()->changeFromLast(Qt::red);
    (*stage)->addLegend(true, eLEGEND_RIGHT, nullptr);
    XYLegend* const legend = (*stage)->getLegend();
    // Heading, two names, and for the bar a blank line, its heading and one state; one line more
    // for the margins.
    int const line = QFontMetrics(settings.plotTitleFont).lineSpacing();
    QPixmap const ample = legend->drawLegendToPixmap({1000, 1000});
    QCOMPARE(ample.height(), 7 * line);
    QVERIFY(ample.width() < 300);
    QCOMPARE(legend->drawLegendToPixmap(ample.size()).size(), ample.size());
    QPixmap const smaller = legend->drawLegendToPixmap({1000, ample.height() - 1});
    QVERIFY(smaller.height() < ample.height() && smaller.width() < ample.width());
    QCOMPARE(legend->drawLegendToPixmap({20, 10}).size(), QSize(20, 10));
    QVERIFY(legend->drawLegendToPixmap({-1, 10}).isNull());
    settings.legendTitleFont.setPixelSize(INT_MAX);
    plotRenderSettings.push(settings);
    QVERIFY(legend->drawLegendToPixmap({200, 100}).height() <= 100);
    getPlotRenderSettings().legendSymbolWidth = INT_MAX;
    QCOMPARE(legend->drawLegendToPixmap({200, 100}).width(), 200);
    plotRenderSettings.pop();
}

QTEST_MAIN(tst_XYPlotRender)
#include "tst_xyplot_render.moc"
