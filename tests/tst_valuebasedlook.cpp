#include "dataarraytemplate.h"
#include "librarytest.h"
#include "valuebasedlook.h"
#include "xydataset.h"

#include <QSignalSpy>
#include <limits>

constexpr double infinity = std::numeric_limits<double>::infinity();

class tst_ValueBasedLook : public LibraryTest
{
    Q_OBJECT
private:
    void makeObjects() override
    {
        dataSet = std::make_unique<XYDataSet>(new DataArrayTemplate<double>,
                                              new DataArrayTemplate<double>, "status", Qt::gray,
                                              SYMBOL_NONE, Qt::SolidLine, 1);
        look = new ValueBasedLook(dataSet.get(), Qt::gray, SYMBOL_DOT, Qt::DashLine, 2);
    }
    void deleteObjects() override { dataSet.reset(); }
    /// Colour and thickness of a point with that y value.
    QString appearance(double y)
    {
        dataSet->append(0.0, y);
        Look::Entry const entry = look->getApplicableLookEntry(dataSet->yData->dataSize() - 1);
        return entry.color.name() + QString::number(entry.lineThickness);
    }
    std::unique_ptr<XYDataSet> dataSet;
    ValueBasedLook* look = nullptr;

private Q_SLOTS:
    void valuesMatchTheirCodes();
    void interpolation();
    void presenceFollowsTheLastPoint();
    void changesAreThoseOfTheValue();
};

void tst_ValueBasedLook::valuesMatchTheirCodes()
{
    QString const none = QColor(Qt::gray).name() + '2';
    QCOMPARE(appearance(1.0), none);
    look->addTableEntry(3.0, Qt::blue, "three");
    look->addTableEntry(1.0, Qt::red, SYMBOL_NONE, Qt::SolidLine, 5, "one");
    look->addTableEntry(NaN, Qt::black, "never");
    for (auto const& [y, expected] : {std::pair(1.0, QString("#ff00005")),
                                      {1.9, "#ff00005"},
                                      {2.0, none},
                                      {3.0, "#0000ff2"},
                                      {3.9, "#0000ff2"},
                                      {0.0, none},
                                      {NaN, none},
                                      {1e300, none},
                                      {-infinity, none}})
        QVERIFY2(appearance(y) == expected, qPrintable(QString::number(y)));
    appearance(1.0);
    look->addTableEntry(1.0, Qt::green, SYMBOL_NONE, Qt::SolidLine, 5, "");
    QCOMPARE(appearance(1.0), "#00ff005");
    QCOMPARE(look->getApplicableLookEntry(-1).color, QColor(Qt::gray));
}

void tst_ValueBasedLook::interpolation()
{
    look->addTableEntry(0.0, Qt::black, SYMBOL_PLUS, Qt::SolidLine, 1, "");
    look->addTableEntry(10.0, Qt::white, SYMBOL_NONE, Qt::DotLine, 4, "");
    look->addTableEntry(infinity, Qt::red, "");
    look->setUseInterpolation(true);
    for (auto const& [y, expected] : {std::pair(5.0, "#7f7f7f2"),
                                      {0.0, "#0000001"},
                                      {9.9, "#fcfcfc3"},
                                      {10.0, "#ffffff4"},
                                      {-1.0, "#a0a0a42"},
                                      {infinity, "#ff00002"}})
        QCOMPARE(appearance(y), QString(expected));
    appearance(8.0);
    QCOMPARE(look->getSymbol(dataSet->yData->dataSize() - 1), SYMBOL_PLUS);
}

void tst_ValueBasedLook::presenceFollowsTheLastPoint()
{
    look->addTableEntry(1.0, Qt::red, "one");
    look->addTableEntry(3.0, Qt::blue, "three");
    QSignalSpy const present(look, &Look::presentLookEntriesChanged);
    QSignalSpy const changed(look, &Look::lastAppearanceChanged);
    for (double const y : {1.0, 1.0, 3.0, 1.0})
        dataSet->append(0.0, y);
    QCOMPARE(changed.size(), 3);
    QCOMPARE(present.size(), 2);
    look->clear();
    double const run[] = {1.0, 3.0, 1.0, 3.0};
    dataSet->append(run, run, 1); // looks as the last point does
    QVERIFY(look->getLookEntriesForLegend().isEmpty());
    dataSet->append(run, run, 4);
    QCOMPARE(look->getPresentLookEntries().size(), 2);
    QCOMPARE(present.size(), 4);
    look->clear();
    connect(look, &Look::presentLookEntriesChanged, dataSet->yData, &DataArray::reinit);
    double const others[] = {1.0, NaN, 1.0};
    dataSet->append(others, others, 3); // a slot empties the column while the run is told
    QCOMPARE(look->getPresentLookEntries().size(), 1);
}

void tst_ValueBasedLook::changesAreThoseOfTheValue()
{
    look->addTableEntry(1.0, Qt::red, "one");
    for (double const y : {1.0, 1.0, 1.5, NaN, NaN})
        dataSet->append(0.0, y);
    QString changes;
    for (int i = 0; i < 5; ++i)
        changes += look->isChanged(i) ? '1' : '0';
    QCOMPARE(changes, "10111");
}

QTEST_GUILESS_MAIN(tst_ValueBasedLook)
#include "tst_valuebasedlook.moc"
