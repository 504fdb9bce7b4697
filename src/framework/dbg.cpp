#include "dbg.h"

#include <QByteArray>
#include <QLoggingCategory>

namespace {
QByteArray categoryName(char const* module, char const* subModule)
{
    return QByteArray(module) + '.' + subModule;
}
} // namespace

int dbg_SubModActive(char const* module, char const* subModule)
{
    QByteArray const name = categoryName(module, subModule);
    QLoggingCategory const category(name.constData());
    return category.isDebugEnabled() ? 1 : 0;
}

void dbg_Assert(char const* module, char const* subModule, int /*reserved*/, char const* function,
                char const* file, int line, char const* message)
{
    QByteArray const name = categoryName(module, subModule);
    QMessageLogger(file, line, function, name.constData())
        .critical("%s at %s:%d: %s", function, file, line, message);
}
