#pragma once

#include "cameras/SourceAddress.h"

#include <gst/rtsp-server/rtsp-server.h>

#include <QHash>
#include <QString>

#include <functional>
#include <thread>

/// Serves the pictures of cameras over RTSP to those who know a user and a password: one connection to each
/// stream of a camera however many look, and none while nobody does. Serves in threads of its own.
class RelayServer
{
public:
    /// One line about a camera, in any thread.
    using Teller = std::function<void(const QString& line)>;

    explicit RelayServer(Teller tell);
    ~RelayServer();
    RelayServer(const RelayServer&) = delete;
    RelayServer& operator=(const RelayServer&) = delete;

    /// Who may look, all of them; passwords travel as digests.
    void setLogins(const QVector<Login>& logins);
    /// False where nobody can listen at that port.
    bool listen(const QString& address, int port);
    /// What there is to look at from now on, by path, all of it. Who looks at what is gone, or comes from
    /// elsewhere now, is cut off; all else goes on.
    void setCameras(const QHash<QString, SourceAddress>& cameras);

private:
    void endLoop();
    void add(const QString& path, const SourceAddress& address);
    void remove(const QString& path);

    Teller m_tell;
    GMainContext* m_context;
    GMainLoop* m_loop;
    GstRTSPServer* m_server;
    GstRTSPMountPoints* m_mounts;
    QHash<QString, SourceAddress> m_cameras;
    std::thread m_thread;
};
