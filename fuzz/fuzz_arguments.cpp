// Command lines of any content: options, or one line that says what is wrong.

#include "fuzzinput.h"
#include "options.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray line(reinterpret_cast<const char *>(data), int(size));
    QStringList arguments = {QStringLiteral("norda-bench")};
    for (const QByteArray &argument : line.split('\n'))
        arguments.append(QString::fromUtf8(argument));
    Options options;
    QString error;
    if (options.parse(arguments, &error))
        return 0;
    if (error.isEmpty() || error.contains(QLatin1Char('\n')))
        std::abort();
    return 0;
}
