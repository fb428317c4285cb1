#pragma once

#include "appplugin.h"

#include <QObject>

#include <array>

namespace norda {

/** The root that the host knows by name: hands out windows and audio sources by id. */
class Plugin : public QObject, public AppPlugin
{
    Q_OBJECT
    Q_INTERFACES(AppPlugin)
public:
    Plugin();
    ~Plugin() override;

    void create() override;
    QList<int> windowInterfaceID() override;
    QList<int> sourceInterfaceID() override;
    WindowInterface *requestWindowInterface(int id) override;
    SourceInterface *requestSourceInterface(int id) override;

    void initQuillo();
    void startQuilloSevice();

private:
    std::array<SourceInterface *, 3> m_voiceSources{};
    std::array<WindowInterface *, 6> m_windows{};
};

} // namespace norda
