#pragma once

#include "messagerecorder.h"
#include "objectcounts.h"

#include <QTest>
#include <optional>

/// A test of which no function may leave a message or a counted object behind.
class LibraryTest : public QObject
{
    Q_OBJECT
protected:
    virtual void makeObjects() { } ///< what each function starts with
    virtual void deleteObjects() { }

    std::optional<MessageRecorder> messages;

private Q_SLOTS:
    void init()
    {
        messages.emplace();
        makeObjects();
    }
    void cleanup()
    {
        deleteObjects();
        QStringList const unexpected = messages->take();
        messages.reset();
        QCOMPARE(unexpected, QStringList());
        QCOMPARE(liveObjects(), QStringList());
    }
};
