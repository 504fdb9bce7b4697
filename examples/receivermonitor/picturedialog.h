#pragma once

#include "plotpicture.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

/// Asks how a picture is to look.
class PictureDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p options is what is shown at first.
    PictureDialog(QStringList const& plotNames, PictureOptions const& options, QWidget* parent);

    /// What is shown now.
    PictureOptions options() const;

private:
    QSpinBox* makeNumber(int least, int most, QString const& unit);

    QComboBox* m_plot;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QSpinBox* m_fontSize;
    QSpinBox* m_lineThickness;
    QCheckBox* m_hasLegend;
    QLineEdit* m_title;
};
