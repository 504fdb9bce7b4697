#pragma once

#include "zelplot_export.h"
#include <QFont>
#include <QLabel>
#include <QString>

/**
 * A line of text that reads upwards.
 *
 * The text is shown as a picture, so a new font or palette shows with the next setText().
 */
class ZELPLOT_EXPORT VerticalLabel : public QLabel
{
    Q_OBJECT
public:
    VerticalLabel(QString text, QWidget* parent);
    ~VerticalLabel() override;

    QString text() const { return labelText; }
    void setText(QString text);
    /// Shows @p text, with an empty picture if it is empty.
    void setTextPixmap(QString text);
    /// To be called before there is a text: it leaves the label without one.
    void setFontAndUpdate(QFont font);

private:
    QString labelText;
};
