#include "session/warnings.h"

static constexpr int mostKept = 20;
static int counted = 0;
static QStringList kept;
static QtMessageHandler previous = nullptr;

static void countWarnings(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        ++counted;
        if (kept.size() < mostKept)
            kept.append(text);
    }
    previous(type, context, text);
}

Warnings::Warnings()
{
    previous = qInstallMessageHandler(countWarnings);
}

Warnings::~Warnings()
{
    qInstallMessageHandler(previous);
}

int Warnings::count()
{
    return counted;
}

QStringList Warnings::first()
{
    return kept;
}
