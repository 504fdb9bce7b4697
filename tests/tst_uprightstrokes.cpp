#include "painterstrokesink.h"

#include <QImage>
#include <QRandomGenerator>
#include <QTest>

constexpr int width = 40;
constexpr int height = 30;

class tst_UprightStrokes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void lookAsThePaintersOwn_data();
    void lookAsThePaintersOwn();
};

using Change = void (*)(QPainter&);

void tst_UprightStrokes::lookAsThePaintersOwn_data()
{
    QTest::addColumn<bool>("direct");
    QTest::addColumn<Change>("change");
    auto const row = [](char const* name, bool direct, Change change) {
        QTest::newRow(name) << direct << change;
    };
    row("plain", true, [](QPainter&) {});
    row("all in clip", true, [](QPainter& p) { p.setClipRect(0, 0, width, height); });
    row("clipped", false, [](QPainter& p) { p.setClipRect(0, 0, width, 5); });
    row("dashes", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::DashLine)); });
    row("thick", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 2)); });
    row("flat ends", false,
        [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::FlatCap)); });
    row("lucent", false, [](QPainter& p) { p.setPen(QPen(QColor(0, 0, 0, 90), 1)); });
    row("hatched", false, [](QPainter& p) { p.setPen(QPen(Qt::Dense4Pattern, 1)); });
    row("hard", false, [](QPainter& p) { p.setRenderHint(QPainter::Antialiasing, false); });
    row("shifted", false, [](QPainter& p) { p.translate(0.5, 0.0); });
    row("faded", false, [](QPainter& p) { p.setOpacity(0.5); });
    row("added", false, [](QPainter& p) { p.setCompositionMode(QPainter::CompositionMode_Plus); });
}

/// Mixed with slanted lines, which the painter draws, so that a changed order shows.
void tst_UprightStrokes::lookAsThePaintersOwn()
{
    QFETCH(bool, direct);
    QFETCH(Change, change);
    QRandomGenerator random(1);
    for (int round = 0; round < 100; ++round) {
        QImage image(width, height,
                     round % 2 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        for (int i = 0; i < width * height; ++i)
            image.setPixelColor(i % width, i / width, QColor::fromRgba(random.generate()));
        QImage expected = image.copy();
        QPainter painter(&image);
        QPainter reference(&expected);
        for (QPainter* const p : {&painter, &reference}) {
            p->setRenderHint(QPainter::Antialiasing);
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
            sink.setPen(pen);
            reference.setPen(pen);
            // On the edges, and a pixel beyond, too.
            int const x = random.bounded(-1, width + 2);
            int const y = random.bounded(-1, height + 2);
            for (QPoint const to :
                 {QPoint(x, random.bounded(-1, height + 2)), QPoint(width - x, height - y)}) {
                sink.drawLine(QLine(QPoint(x, y), to));
                reference.drawLine(QPoint(x, y), to);
            }
        }
        int difference = 0;
        for (qsizetype i = 0; i < image.sizeInBytes(); ++i)
            difference = qMax(difference, qAbs(image.constBits()[i] - expected.constBits()[i]));
        QVERIFY(difference <= 1);
        QCOMPARE(UprightStrokes(painter).draw(QLine(2, 1, 2, 4)), direct);
    }
}

QTEST_MAIN(tst_UprightStrokes)
#include "tst_uprightstrokes.moc"
