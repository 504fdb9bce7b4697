#pragma once

#include <QStringList>

/**
 * Collects warnings and critical messages, assertions of the library included, while it lives.
 *
 * A test takes what it expects with take(); what is left over at the end is a fault.
 */
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();
    MessageRecorder(MessageRecorder const&) = delete;
    MessageRecorder& operator=(MessageRecorder const&) = delete;

    /// The messages since the last call, oldest first; none are kept.
    QStringList take();

    /// Takes the messages; true if there is exactly one and it contains @p text.
    bool tookOnly(QString const& text);

    /// Takes the messages and counts those that contain @p text.
    int takeCount(QString const& text);
};
