#pragma once

#include "viewsynchronizer.h"
#include "zelplot_export.h"
#include <QWidget>

class QDialog;
class QRadioButton;

/**
 * A page for a settings dialog, or a dialog of its own, with which the user chooses the scope of
 * view synchronisation. Nothing changes before accept().
 */
class ZELPLOT_EXPORT ViewSynchronizationOptionsWidget : public QWidget
{
    Q_OBJECT
public:
    /// @p showFileScope offers the choice of plots per file.
    ViewSynchronizationOptionsWidget(QWidget* parent, bool showFileScope);
    ~ViewSynchronizationOptionsWidget() override;

    /// Shows the present scope.
    void setWidgetContentsFromSettings();
    /// Enables the scope that is shown.
    void setSettingsFromWidgetContents();

    /// A dialog, the caller's, that takes this widget over; its picture is the application's
    /// ":/pic/timeplot_big.png".
    QDialog* turnIntoDialog(QWidget* parent);

Q_SIGNALS:
    void accepted();

public Q_SLOTS:
    void accept();

private:
    static constexpr int choiceCount = 4;

    void setupWidgets();

    QRadioButton* buttons[choiceCount] = {}; // in the order of the choices
};
