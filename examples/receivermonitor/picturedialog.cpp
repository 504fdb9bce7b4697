#include "picturedialog.h"

#include "options.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {

constexpr int leastSide = 50; // pixels
constexpr int leastFont = 4; // points
constexpr int largestFont = 200;
constexpr int thickestLine = 50; // times that of the screen

} // namespace

PictureDialog::PictureDialog(QStringList const& plotNames, PictureOptions const& options,
                             QWidget* parent)
    : QDialog(parent)
    , m_plot(new QComboBox(this))
    , m_width(makeNumber(leastSide, Options::largestSide, tr(" px")))
    , m_height(makeNumber(leastSide, Options::largestSide, tr(" px")))
    , m_fontSize(makeNumber(leastFont, largestFont, tr(" pt")))
    , m_lineThickness(makeNumber(1, thickestLine, tr(" x")))
    , m_hasLegend(new QCheckBox(this))
    , m_title(new QLineEdit(options.title, this))
{
    setWindowTitle(tr("Save Picture"));
    m_plot->addItems(plotNames);
    m_plot->setCurrentIndex(options.plot);
    m_width->setValue(options.size.width());
    m_height->setValue(options.size.height());
    m_fontSize->setValue(options.fontSize);
    m_lineThickness->setValue(options.lineThickness);
    m_hasLegend->setChecked(options.hasLegend);

    auto* const buttons
        = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setText(tr("&Save..."));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const form = new QFormLayout(this);
    form->addRow(tr("&Plot:"), m_plot);
    form->addRow(tr("&Width:"), m_width);
    form->addRow(tr("&Height:"), m_height);
    form->addRow(tr("&Font size:"), m_fontSize);
    form->addRow(tr("&Line thickness:"), m_lineThickness);
    form->addRow(tr("L&egend:"), m_hasLegend);
    form->addRow(tr("&Title:"), m_title);
    form->addRow(buttons);
}

QSpinBox* PictureDialog::makeNumber(int least, int most, QString const& unit)
{
    auto* const box = new QSpinBox(this);
    box->setRange(least, most);
    box->setSuffix(unit);
    return box;
}

PictureOptions PictureDialog::options() const
{
    PictureOptions options;
    options.plot = m_plot->currentIndex();
    options.size = QSize(m_width->value(), m_height->value());
    options.fontSize = m_fontSize->value();
    options.lineThickness = m_lineThickness->value();
    options.hasLegend = m_hasLegend->isChecked();
    options.title = m_title->text();
    return options;
}
