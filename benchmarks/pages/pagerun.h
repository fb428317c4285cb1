#pragma once

#include <QStringList>

class QObject;
class QWindow;

/** The gauges page, made with one toolkit or the other. */
class GaugesPage
{
public:
    GaugesPage() = default;
    GaugesPage(const GaugesPage &) = delete;
    GaugesPage &operator=(const GaugesPage &) = delete;
    virtual ~GaugesPage();

    virtual void show() = 0;
    /** Known once the page is shown. */
    virtual QWindow *window() const = 0;
    /** Which object turns an UpdateRequest into a frame. */
    virtual QObject *painter() const = 0;
    /** One of every signal of the page, with new values. */
    virtual void burst(int turn) = 0;
    /** The centre gauge's needle goes there, animated. */
    virtual void setNeedle(int position) = 0;
};

/**
 * Does with a page what the first argument names, and prints what it took as lines of name and
 * value: "start", "burst", "step" or "picture" with a file. @return the exit code
 */
int runPage(GaugesPage *page, const QStringList &arguments);
