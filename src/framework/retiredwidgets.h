#pragma once

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <utility>

/**
 * Widgets of a legend that were replaced while one of its signals was on its way.
 *
 * A button touches itself after its signal, so it must outlive it. What is taken here is hidden,
 * has no parent, and goes when the event loop is back and no signal is under way any more. A legend
 * and those that stand in it share one, as a slot of any of them may replace them all.
 */
class RetiredWidgets
{
public:
    RetiredWidgets()
    {
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { deleteAll(); });
    }
    ~RetiredWidgets() { deleteAll(); }
    RetiredWidgets(RetiredWidgets const&) = delete;
    RetiredWidgets& operator=(RetiredWidgets const&) = delete;

    /// Says, while it lives, that a signal of one of the widgets is under way.
    class SignalScope
    {
    public:
        explicit SignalScope(RetiredWidgets& retiredWidgets)
            : owner(retiredWidgets)
        {
            ++owner.signalDepth;
        }
        ~SignalScope()
        {
            --owner.signalDepth;
            owner.deleteSoon();
        }
        SignalScope(SignalScope const&) = delete;
        SignalScope& operator=(SignalScope const&) = delete;

    private:
        RetiredWidgets& owner;
    };

    bool isSignalUnderWay() const { return signalDepth > 0; }

    /// Deletes @p widget at once, or keeps it for a while if @p inSignal.
    void remove(QWidget* widget, bool inSignal)
    {
        if (!inSignal) {
            delete widget;
            return;
        }
        widget->hide();
        widget->setParent(nullptr);
        widgets.append(widget);
        deleteSoon();
    }

    /// Deletes what is kept, unless a signal is under way.
    void deleteAll()
    {
        if (signalDepth > 0)
            return;
        // The last that owns this may be among them, so nothing of it is used behind the loop.
        for (QPointer<QWidget> const& widget : std::exchange(widgets, {}))
            delete widget;
    }

private:
    void deleteSoon()
    {
        // A slot may run an event loop of its own, so the timer waits for the end of the signal.
        if (signalDepth == 0 && !widgets.isEmpty())
            timer.start(0);
    }

    int signalDepth = 0;
    QList<QPointer<QWidget>> widgets;
    QTimer timer;
};
