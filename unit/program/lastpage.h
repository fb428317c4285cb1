#pragma once

#include <QBasicTimer>
#include <QObject>

class WindowStack;

/**
 * Keeps which page is open for the next start. A page that is open for less than ten seconds when
 * the program ends may be why; after the second time in a row it is not opened again. Only what
 * ends the program without an orderly end counts, so a hang does too, however long it lasts.
 */
class LastPage : public QObject
{
    Q_OBJECT
public:
    static constexpr int SettledAfterMs = 10'000;
    static constexpr int MostStarts = 2;

    explicit LastPage(WindowStack *windows, QObject *parent = nullptr);
    ~LastPage() override;

    /** The page to open at the start. @param usual  where none is kept, or the kept one is suspect
     */
    int pageToOpen(int usual);
    /** The page has nothing to do with the end that follows. */
    void settle();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void onOpened(int page);
    void keep() const;

    int m_page = -1;
    int m_starts = 0; // with this page that it has not yet survived
    QBasicTimer m_settling;
};
