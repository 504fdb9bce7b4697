#include "dbg.h"
#include "messagerecorder.h"
#include "xyplotcommon.h"
#include "zelplotglobals.h"

#include <QLoggingCategory>
#include <QTest>

class tst_Framework : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nanIsUnequalToItself() { QVERIFY(NaN != NaN); } // NOLINT(misc-redundant-expression)
    void subModuleFollowsTheLoggingRules();
    void assertionIsOneLineAndReturns();
    void fixedLabelFontScalesWhateverSizeIsSet();
};

void tst_Framework::subModuleFollowsTheLoggingRules()
{
    QLoggingCategory::setFilterRules(QStringLiteral("zelplot.Noisy.debug=true\n"
                                                    "zelplot.Quiet.debug=false"));
    QCOMPARE(dbg_SubModActive("zelplot", "Noisy"), 1);
    QCOMPARE(dbg_SubModActive("zelplot", "Quiet"), 0);
    QLoggingCategory::setFilterRules(QString());
}

void tst_Framework::assertionIsOneLineAndReturns()
{
    MessageRecorder messages;
    dbg_Assert("zelplot", "Look", 0, "doIt", "src/look/look", 42, "100 % wrong");
    QCOMPARE(messages.take(), QStringList(QStringLiteral("doIt at src/look/look:42: 100 % wrong")));
}

void tst_Framework::fixedLabelFontScalesWhateverSizeIsSet()
{
    QFont const before = QGuiApplication::font();
    QFont points = before;
    points.setPointSizeF(20.0);
    QGuiApplication::setFont(points);
    QCOMPARE(getDefaultPlotRenderSettings().fixedLabelFont.pointSizeF(), 16.0);
    QCOMPARE(getDefaultPlotRenderSettings().legendTitleFont.weight(), QFont::Bold);

    QFont pixels = before;
    pixels.setPixelSize(30);
    QGuiApplication::setFont(pixels);
    QCOMPARE(getDefaultPlotRenderSettings().fixedLabelFont.pixelSize(), 24);
    QGuiApplication::setFont(before);
}

QTEST_MAIN(tst_Framework)
#include "tst_framework.moc"
