#pragma once

#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <sys/types.h>

struct Setup;

/** A vehicle module in a process of its own, on a bus of its own. Both end with this object. */
class ModuleProcess
{
public:
    ~ModuleProcess();

    /**
     * Starts both; call it before there is an application object.
     * @param setup  the source, and where the module records
     * @param error  one line that names what cannot be started or used
     */
    static std::unique_ptr<ModuleProcess> start(const Setup &setup, QString *error);

    /** Of the bus. */
    QString address() const;

private:
    ModuleProcess();

    bool startBus(QString *error);
    bool startModule(const Setup &setup, QString *error);

    QTemporaryDir m_folder;
    pid_t m_bus = -1;
    pid_t m_module = -1;
};
