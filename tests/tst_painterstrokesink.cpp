#include "painterstrokesink.h"

#include <QImage>
#include <QRandomGenerator>
#include <QTest>

constexpr int width = 40;
constexpr int height = 30;

class tst_PainterStrokeSink : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void linesLookAsThePaintersOwn_data();
    void linesLookAsThePaintersOwn();
    void symbolsLookAsThePaintersOwn_data();
    void symbolsLookAsThePaintersOwn();
    void rowsOfBrokenPixelsAreLeftToThePainter();
};

using Change = void (*)(QPainter&);

/// One picture painted on by the sink, another by the painter alone.
struct Pictures
{
    Pictures(QRandomGenerator& random, QImage::Format format, double ratio)
        : image((QSizeF(width, height) * ratio).toSize(), format)
    {
        image.setDevicePixelRatio(ratio);
        QRgb const opacity = format == QImage::Format_RGB32 ? 0xff000000U : 0U;
        for (int i = 0; i < image.width() * image.height(); ++i)
            image.setPixel(i % image.width(), i / image.width(),
                           qPremultiply(random.generate() | opacity));
        expected = image.copy();
        painter.begin(&image);
        reference.begin(&expected);
        for (QPainter* const p : {&painter, &reference}) {
            p->setRenderHint(QPainter::Antialiasing);
            p->setViewport(0, 0, width, height);
            p->setWindow(QRect(QPoint(0, height), QPoint(width - 1, -1)));
            p->setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        }
    }
    int largestDifference() const
    {
        int difference = 0;
        for (qsizetype i = 0; i < image.sizeInBytes(); ++i)
            difference = qMax(difference, qAbs(image.constBits()[i] - expected.constBits()[i]));
        return difference;
    }

    QImage image;
    QImage expected;
    QPainter painter;
    QPainter reference;
};

void tst_PainterStrokeSink::linesLookAsThePaintersOwn_data()
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
    row("clipped aslant", false, [](QPainter& p) {
        p.rotate(0.3);
        p.setClipRect(0, 0, width + 1, height + 1);
        p.rotate(-0.3);
    });
    row("dashes", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::DashLine)); });
    row("fractional", false, [](QPainter& p) { p.setPen(QPen(Qt::red, 1.5)); });
    row("flat ends", false,
        [](QPainter& p) { p.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::FlatCap)); });
    row("lucent", false, [](QPainter& p) { p.setPen(QPen(QColor(0, 0, 0, 90), 1)); });
    row("hatched", false, [](QPainter& p) { p.setPen(QPen(Qt::Dense4Pattern, 1)); });
    row("hard", false, [](QPainter& p) { p.setRenderHint(QPainter::Antialiasing, false); });
    row("mitred", false, [](QPainter& p) {
        p.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    });
    row("shifted", false, [](QPainter& p) { p.translate(0.3, 0.0); });
    row("far away", false, [](QPainter& p) { p.translate(std::numeric_limits<int>::max(), 0.0); });
    row("faded", false, [](QPainter& p) { p.setOpacity(0.5); });
    row("added", false, [](QPainter& p) { p.setCompositionMode(QPainter::CompositionMode_Plus); });
}

/// Upright, level, to the next column and others in turns, so that a changed order shows.
void tst_PainterStrokeSink::linesLookAsThePaintersOwn()
{
    QFETCH(bool, direct);
    QFETCH(double, ratio);
    QFETCH(Change, change);
    QRandomGenerator random(1);
    for (int round = 0; round < 100; ++round) {
        Pictures pictures(
            random, round % 2 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied, ratio);
        change(pictures.painter);
        change(pictures.reference);
        PainterStrokeSink sink(pictures.painter);
        for (int stroke = 0; stroke < 5; ++stroke) {
            QPen pen = pictures.painter.pen();
            QColor color = QColor::fromRgb(random.generate());
            color.setAlpha(pen.color().alpha());
            QBrush brush = pen.brush();
            brush.setColor(color);
            pen.setBrush(brush);
            pen.setWidthF(pen.widthF() + random.bounded(3));
            sink.setPen(pen);
            pictures.reference.setPen(pen);
            // On the edges, and a pixel beyond, too.
            int const x = random.bounded(-1, width + 2);
            int const y = random.bounded(-1, height + 2);
            for (QPoint const to :
                 {QPoint(x, random.bounded(-1, height + 2)), QPoint(width - x, height - y),
                  QPoint(random.bounded(-1, width + 2), y),
                  QPoint(x + 1, random.bounded(-1, height + 2))}) {
                sink.drawLine(QLine(QPoint(x, y), to));
                pictures.reference.drawLine(QPoint(x, y), to);
            }
        }
        QVERIFY(pictures.largestDifference() <= 1);
        PlainRaster const raster(pictures.painter);
        AlignedStrokes strokes(raster);
        strokes.setPen(PlainPen::of(pictures.painter.pen()));
        QCOMPARE(strokes.draw(QLine(2, 1, 2, 4)), direct);
    }
}

void tst_PainterStrokeSink::symbolsLookAsThePaintersOwn_data()
{
    QTest::addColumn<double>("ratio");
    for (double const ratio : {1.0, 1.5, 2.0, 4.0, 5.0})
        QTest::addRow("ratio %g", ratio) << ratio;
}

/// Many on top of each other, whose differences must not add up.
void tst_PainterStrokeSink::symbolsLookAsThePaintersOwn()
{
    QFETCH(double, ratio);
    QRandomGenerator random(1);
    for (int symbol = SYMBOL_NONE; symbol <= SYMBOL_DIAMOND + 1; ++symbol) {
        for (int const radius : {0, 1, 3, 4, 20}) {
            Pictures pictures(random, QImage::Format_RGB32, ratio);
            PainterStrokeSink sink(pictures.painter);
            for (int i = 0; i < 200; ++i) {
                QPen pen = pictures.painter.pen();
                if (i % 20 == 0 && i <= 100) { // then all of one colour at one place
                    pen.setColor(QColor::fromRgb(random.generate()));
                    pen.setWidth(random.bounded(1, 4));
                }
                sink.setPen(pen);
                pictures.reference.setPen(pen);
                QPoint centre(random.bounded(width + 1), random.bounded(height + 1));
                if (i >= 100)
                    centre = QPoint(width, height) / 2;
                sink.drawSymbol(centre, E_SYMBOL(symbol), radius);
                paintSymbol(pictures.reference, centre, E_SYMBOL(symbol), radius);
            }
            QCOMPARE(pictures.largestDifference(), 0);
        }
    }
}

/// In memory of an application.
void tst_PainterStrokeSink::rowsOfBrokenPixelsAreLeftToThePainter()
{
    alignas(QRgb) uchar memory[200] = {};
    QImage image(memory, 4, 4, 4 * int(sizeof(QRgb)) + 2, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QVERIFY(PlainRaster(painter).isNull());
}

QTEST_MAIN(tst_PainterStrokeSink)
#include "tst_painterstrokesink.moc"
