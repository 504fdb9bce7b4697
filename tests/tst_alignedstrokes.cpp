#include "painterstrokesink.h"

#include <QImage>
#include <QRandomGenerator>
#include <QTest>

constexpr int width = 40;
constexpr int height = 30;

class tst_AlignedStrokes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void lookAsThePaintersOwn_data();
    void lookAsThePaintersOwn();
};

using Change = void (*)(QPainter&);

void tst_AlignedStrokes::lookAsThePaintersOwn_data()
{
    QTest::addColumn<bool>("direct");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<Change>("change");
    for (double const ratio : {1.0, 1.25, 1.5, 2.0, 3.75})
        QTest::addRow("ratio %g", ratio) << true << ratio << Change([](QPainter&) {});
    QTest::newRow("tenths") << false << 1.1 << Change([](QPainter&) {});
    QTest::newRow("half") << false << 0.5 << Change([](QPainter&) {});
    auto const row = [](char const* name, bool direct, Change change) {
        QTest::newRow(name) << direct << 1.0 << change;
    };
    row("all in clip", true, [](QPainter& p) { p.setClipRect(0, 0, width, height); });
    row("clipped", false, [](QPainter& p) { p.setClipRect(0, 0, width, 5); });
    row("dashes", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::DashLine)); });
    row("fractional", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 1.5)); });
    row("flat ends", false,
        [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::FlatCap)); });
    row("lucent", false, [](QPainter& p) { p.setPen(QPen(QColor(0, 0, 0, 90), 1)); });
    row("hatched", false, [](QPainter& p) { p.setPen(QPen(Qt::Dense4Pattern, 1)); });
    row("hard", false, [](QPainter& p) { p.setRenderHint(QPainter::Antialiasing, false); });
    row("shifted", false, [](QPainter& p) { p.translate(0.3, 0.0); });
    row("faded", false, [](QPainter& p) { p.setOpacity(0.5); });
    row("added", false, [](QPainter& p) { p.setCompositionMode(QPainter::CompositionMode_Plus); });
}

/// Mixed with slanted lines, which the painter draws, so that a changed order shows.
void tst_AlignedStrokes::lookAsThePaintersOwn()
{
    QFETCH(bool, direct);
    QFETCH(double, ratio);
    QFETCH(Change, change);
    QRandomGenerator random(1);
    for (int round = 0; round < 100; ++round) {
        QImage image((QSizeF(width, height) * ratio).toSize(),
                     round % 2 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        for (int i = 0; i < image.width() * image.height(); ++i)
            image.setPixel(i % image.width(), i / image.width(),
                           qPremultiply(random.generate() | (round % 2 ? 0xff000000U : 0U)));
        QImage expected = image.copy();
        QPainter painter(&image);
        QPainter reference(&expected);
        for (QPainter* const p : {&painter, &reference}) {
            p->setRenderHint(QPainter::Antialiasing);
            p->setViewport(0, 0, width, height);
            p->setWindow(QRect(QPoint(0, height), QPoint(width - 1, -1)));
            p->setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
            change(*p);
        }
        PainterStrokeSink sink(painter);
        for (int stroke = 0; stroke < 5; ++stroke) {
            QPen pen = painter.pen();
            QColor color = QColor::fromRgb(random.generate());
            color.setAlpha(pen.color().alpha());
            QBrush brush = pen.brush();
            brush.setColor(color);
            pen.setBrush(brush);
            pen.setWidthF(pen.widthF() + random.bounded(3));
            sink.setPen(pen);
            reference.setPen(pen);
            // On the edges, and a pixel beyond, too.
            int const x = random.bounded(-1, width + 2);
            int const y = random.bounded(-1, height + 2);
            for (QPoint const to :
                 {QPoint(x, random.bounded(-1, height + 2)), QPoint(width - x, height - y),
                  QPoint(random.bounded(-1, width + 2), y)}) {
                sink.drawLine(QLine(QPoint(x, y), to));
                reference.drawLine(QPoint(x, y), to);
            }
        }
        int difference = 0;
        for (qsizetype i = 0; i < image.sizeInBytes(); ++i)
            difference = qMax(difference, qAbs(image.constBits()[i] - expected.constBits()[i]));
        QVERIFY(difference <= 1);
        QCOMPARE(AlignedStrokes(painter).draw(QLine(2, 1, 2, 4)), direct);
    }
}

QTEST_MAIN(tst_AlignedStrokes)
#include "tst_alignedstrokes.moc"
