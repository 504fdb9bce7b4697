#include "bounds.h"

#include <QDebug>
#include <QTest>

class tst_Bounds : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void clip_data();
    void clip();
    void setSizeKeepsTheCentre();
    void debugOutput();
};

void tst_Bounds::clip_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("lowerLimit");
    QTest::addColumn<double>("upperLimit");
    QTest::addColumn<double>("clippedLower");
    QTest::addColumn<double>("clippedUpper");

    QTest::newRow("overlap") << 0.0 << 10.0 << 5.0 << 15.0 << 5.0 << 10.0;
    QTest::newRow("touching") << 0.0 << 10.0 << 10.0 << 20.0 << 10.0 << 10.0;
    QTest::newRow("limit above") << 0.0 << 10.0 << 11.0 << 20.0 << NaN << NaN;
    QTest::newRow("limit below") << 0.0 << 10.0 << -9.0 << -1.0 << NaN << NaN;
    QTest::newRow("half a limit") << 0.0 << 10.0 << NaN << 20.0 << NaN << NaN;
    QTest::newRow("half of it stays") << NaN << 10.0 << 0.0 << 1.0 << NaN << 10.0;
}

void tst_Bounds::clip()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(double, lowerLimit);
    QFETCH(double, upperLimit);
    Bounds bounds{1, 2, lower, upper};

    bounds.clip(Bounds::Vertical, Bounds{8, 9, lowerLimit, upperLimit});

    QTEST(bounds.minY, "clippedLower");
    QTEST(bounds.maxY, "clippedUpper");
    QCOMPARE(bounds.size(Bounds::Horizontal), 1.0);
}

void tst_Bounds::setSizeKeepsTheCentre()
{
    Bounds bounds{0, 10, NaN, 10};

    bounds.setSize(Bounds::Horizontal, 4);
    bounds.setSize(Bounds::Vertical, 4);
    QCOMPARE(bounds.minX, 3.0);
    QCOMPARE(bounds.maxX, 7.0);
    QCOMPARE(bounds.maxY, 10.0); // not determined, so left alone

    bounds.setSize(Bounds::Horizontal, 0);
    QCOMPARE(bounds.minX, 5.0);
    QCOMPARE(bounds.maxX, 5.0);
}

void tst_Bounds::debugOutput()
{
    QString output;
    QDebug(&output).nospace() << "a" << Bounds{0.5, 2, NaN, 4} << "b" << QStringLiteral("c");
    QCOMPARE(output,
             "a(MinX:0.500000,MaxX:2.000000 ; MinY:nan,MaxY:4.000000,Size:1.500000xnan) b \"c\" ");
}

QTEST_GUILESS_MAIN(tst_Bounds)
#include "tst_bounds.moc"
