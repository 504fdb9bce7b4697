#pragma once

#include <QString>

/// The name of a data set for a label or menu: without the word " Bar" at its end.
inline QString nameWithoutBar(QString const& name)
{
    QString const suffix = QStringLiteral(" Bar");
    return name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}
