#pragma once

#include "zelplot_export.h"
#include <QHash>
#include <QString>

/**
 * Counts the live objects of each class of the library, so that a program or a test can see a leak.
 *
 * Constructors and destructors report here; a derived object counts once under each class of its
 * chain. For the user-interface thread only.
 */
class ZELPLOT_EXPORT MemLeakTracer
{
public:
    /// The tracer of this process.
    static MemLeakTracer* getInstance();

    void doAllocateObject(QString const& className);
    void doDeallocateObject(QString const& className);

    /// Live objects of that class; 0 for a name never seen.
    int getObjectCount(QString const& className) const;

    /// Live objects of every class that has been seen, by class name.
    QHash<QString, int> const& getObjectCounts() const { return objectCounts; }

private:
    MemLeakTracer() = default;

    QHash<QString, int> objectCounts;
};
