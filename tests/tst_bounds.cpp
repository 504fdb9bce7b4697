#include "bounds.h"

#include <QDebug>
#include <QTest>

class tst_Bounds : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void clip();
    void setSizeKeepsTheCentre();
    void debugOutput();
};

void tst_Bounds::clip()
{
    auto const clipped = [](double lower, double upper, double lowerLimit, double upperLimit) {
        Bounds bounds{1, 2, lower, upper};
        bounds.clip(Bounds::Vertical, {8, 9, lowerLimit, upperLimit});
        return QString::asprintf("%g..%g %g..%g", bounds.minX, bounds.maxX, bounds.minY,
                                 bounds.maxY);
    };
    QCOMPARE(clipped(0, 10, 5, 15), "1..2 5..10");
    QCOMPARE(clipped(0, 10, 10, 20), "1..2 10..10"); // touching
    QCOMPARE(clipped(0, 10, 11, 20), "1..2 nan..nan"); // limit above
    QCOMPARE(clipped(0, 10, -9, -1), "1..2 nan..nan"); // limit below
    QCOMPARE(clipped(0, 10, NaN, 20), "1..2 nan..nan"); // half a limit
    QCOMPARE(clipped(NaN, 10, 0, 1), "1..2 nan..10"); // half of it stays
}

void tst_Bounds::setSizeKeepsTheCentre()
{
    Bounds bounds{0, 10, NaN, 10};

    bounds.setSize(Bounds::Horizontal, 4);
    bounds.setSize(Bounds::Vertical, 4);
    QCOMPARE(bounds.minX, 3.0);
    QCOMPARE(bounds.maxX, 7.0);
    QCOMPARE(bounds.maxY, 10.0); // not determined, so left alone
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
