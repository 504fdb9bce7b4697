#include "messagerecorder.h"

#include <QtGlobal>

namespace {
QStringList recorded;
QtMessageHandler previousHandler = nullptr;

void record(QtMsgType type, QMessageLogContext const& context, QString const& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg)
        recorded.append(message);
    else if (previousHandler)
        previousHandler(type, context, message);
}
} // namespace

MessageRecorder::MessageRecorder()
{
    recorded.clear();
    previousHandler = qInstallMessageHandler(record);
}

MessageRecorder::~MessageRecorder()
{
    qInstallMessageHandler(previousHandler);
}

QStringList MessageRecorder::take()
{
    return std::exchange(recorded, {});
}

bool MessageRecorder::tookOnly(QString const& text)
{
    QStringList const messages = take();
    return messages.size() == 1 && messages.first().contains(text);
}

int MessageRecorder::takeCount(QString const& text)
{
    return int(take().filter(text).size());
}
