#pragma once

#include "strokesink.h"
#include <QStringList>
#include <QVector>

/// Keeps the strokes and symbols of a curve, each with the pen in force, in the order of drawing.
class RecordingSink final : public StrokeSink
{
public:
    struct Stroke
    {
        QPen pen;
        QLine line; ///< of a symbol, from its centre to its centre
        E_SYMBOL symbol; ///< SYMBOL_NONE for a line
        int radius;
    };

    QPen const& pen() const override { return penInForce; }
    void setPen(QPen const& pen) override
    {
        penInForce = pen;
        ++penChanges;
    }
    void drawLine(QLine line) override { strokes.append({penInForce, line, SYMBOL_NONE, 0}); }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        strokes.append({penInForce, QLine(centre, centre), symbol, radius});
    }

    /// "10,10-20,20" for a line, "#2 at 10,10" for a symbol; the colour first unless it is red.
    QString text() const
    {
        QStringList texts;
        for (Stroke const& stroke : strokes) {
            QString text;
            for (char const* const name : {"black", "blue", "green"}) {
                if (stroke.pen.color() == QColor(name))
                    text = QLatin1String(name) + QLatin1Char(' ');
            }
            QLine const& line = stroke.line;
            if (stroke.symbol != SYMBOL_NONE)
                text += QStringLiteral("#%1 at %2,%3")
                            .arg(stroke.symbol)
                            .arg(line.x1())
                            .arg(line.y1());
            else
                text += QStringLiteral("%1,%2-%3,%4")
                            .arg(line.x1())
                            .arg(line.y1())
                            .arg(line.x2())
                            .arg(line.y2());
            texts.append(text);
        }
        return texts.join(QLatin1String("; "));
    }

    QVector<Stroke> strokes;
    int penChanges = 0;

private:
    QPen penInForce;
};
