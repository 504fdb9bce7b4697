#include "viewsynchronizationoptionswidget.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "viewsynchronizationorganizer.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

DebugTag debugTag("ViewSynchronizationOptionsWidget");

constexpr ViewSynchronizer::Scope choices[]
    = {ViewSynchronizer::None, ViewSynchronizer::WindowScope, ViewSynchronizer::FileScope,
       ViewSynchronizer::ApplicationScope};
constexpr int fileChoice = 2;

} // namespace

ViewSynchronizationOptionsWidget::ViewSynchronizationOptionsWidget(QWidget* parent,
                                                                   bool showFileScope)
    : QWidget(parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(
        QStringLiteral("ViewSynchronizationOptionsWidget"));
    setupWidgets();
    if (!showFileScope)
        buttons[fileChoice]->hide();
    setWidgetContentsFromSettings();
}

ViewSynchronizationOptionsWidget::~ViewSynchronizationOptionsWidget()
{
    MemLeakTracer::getInstance()->doDeallocateObject(
        QStringLiteral("ViewSynchronizationOptionsWidget"));
}

void ViewSynchronizationOptionsWidget::setupWidgets()
{
    QString const texts[choiceCount] = {tr("No view synchronization"),
                                        tr("Synchronize between time plots within a single window"),
                                        tr("Synchronize between time plots for the same file"),
                                        tr("Synchronize between all time plots")};
    auto* const layout = new QVBoxLayout(this);
    for (int i = 0; i < choiceCount; ++i) {
        buttons[i] = new QRadioButton(texts[i], this);
        layout->addWidget(buttons[i]);
    }
}

void ViewSynchronizationOptionsWidget::setWidgetContentsFromSettings()
{
    auto const scope = ViewSynchronizationOrganizer::getInstance()->getCurrentEnabledScope();
    for (int i = 0; i < choiceCount; ++i) {
        if (choices[i] == scope)
            buttons[i]->setChecked(true);
    }
}

void ViewSynchronizationOptionsWidget::setSettingsFromWidgetContents()
{
    for (int i = 0; i < choiceCount; ++i) {
        if (buttons[i]->isChecked()) {
            ViewSynchronizationOrganizer::getInstance()->enableScope(choices[i]);
            return;
        }
    }
}

void ViewSynchronizationOptionsWidget::accept()
{
    setSettingsFromWidgetContents();
    Q_EMIT accepted();
}

QDialog* ViewSynchronizationOptionsWidget::turnIntoDialog(QWidget* parent)
{
    auto* const dialog = new QDialog(parent);
    dialog->setWindowTitle(tr("Time Plot Synchronization Options"));
    dialog->setWindowIcon(QIcon(QStringLiteral(":/pic/timeplot_big.png")));
    auto* const box
        = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal);
    // The scope is applied before the dialog closes.
    connect(box, &QDialogButtonBox::accepted, this, &ViewSynchronizationOptionsWidget::accept);
    connect(this, &ViewSynchronizationOptionsWidget::accepted, dialog, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* const layout = new QGridLayout(dialog);
    layout->addWidget(this, 0, 0);
    layout->addWidget(box, 1, 0);
    return dialog;
}
