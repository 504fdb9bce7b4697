#pragma once

#include "zelplot_export.h"
#include <QScrollBar>

/**
 * A vertical scroll bar for a value that grows upwards, as y does.
 *
 * Its value still grows downwards, as every vertical slider's; arrows and page areas act the other
 * way round, so that the upper ones add to it.
 */
class ZELPLOT_EXPORT VerticalScrollBar : public QScrollBar
{
    Q_OBJECT
public:
    explicit VerticalScrollBar(QWidget* parent);
    ~VerticalScrollBar() override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
