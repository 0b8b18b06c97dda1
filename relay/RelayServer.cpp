#include "RelayServer.h"

#include "RelayFactory.h"

namespace {

constexpr guint CleanSeconds = 2;

gboolean cleanSessions(gpointer server)
{
    GstRTSPSessionPool* sessions = gst_rtsp_server_get_session_pool(GST_RTSP_SERVER(server));
    gst_rtsp_session_pool_cleanup(sessions);
    g_object_unref(sessions);
    return G_SOURCE_CONTINUE;
}

gboolean quit(gpointer loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_REMOVE;
}

/// Who waits for a camera holds nobody else up.
void giveEachAThread(GstRTSPServer* server)
{
    GstRTSPThreadPool* threads = gst_rtsp_server_get_thread_pool(server);
    gst_rtsp_thread_pool_set_max_threads(threads, -1);
    g_object_unref(threads);
}

} // namespace

RelayServer::RelayServer(Teller tell)
    : m_tell(std::move(tell)), m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, false)),
      m_server(gst_rtsp_server_new()), m_mounts(gst_rtsp_server_get_mount_points(m_server))
{
    giveEachAThread(m_server);
    GSource* cleaning = g_timeout_source_new_seconds(CleanSeconds);
    g_source_set_callback(cleaning, cleanSessions, m_server, nullptr);
    g_source_attach(cleaning, m_context);
    g_source_unref(cleaning);
}

RelayServer::~RelayServer()
{
    setCameras({});
    endLoop();
    g_object_unref(m_mounts);
    g_object_unref(m_server);
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

/// A loop that has not begun yet is told too.
void RelayServer::endLoop()
{
    if (!m_thread.joinable())
        return;
    GSource* order = g_idle_source_new();
    g_source_set_callback(order, quit, m_loop, nullptr);
    g_source_attach(order, m_context);
    g_source_unref(order);
    m_thread.join();
}

void RelayServer::setLogins(const QVector<Login>& logins)
{
    GstRTSPAuth* auth = gst_rtsp_auth_new();
    gst_rtsp_auth_set_supported_methods(auth, GST_RTSP_AUTH_DIGEST);
    gst_rtsp_auth_set_realm(auth, "PaneDeck");
    GstRTSPToken* token =
        gst_rtsp_token_new(GST_RTSP_TOKEN_MEDIA_FACTORY_ROLE, G_TYPE_STRING, RelayFactory::Role, nullptr);
    for (const Login& login : logins)
        gst_rtsp_auth_add_digest(auth, login.user.toUtf8().constData(), login.password.toUtf8().constData(),
                                 token);
    gst_rtsp_token_unref(token);
    gst_rtsp_server_set_auth(m_server, auth);
    g_object_unref(auth);
}

bool RelayServer::listen(const QString& address, int port)
{
    gst_rtsp_server_set_address(m_server, address.toUtf8().constData());
    gst_rtsp_server_set_service(m_server, QByteArray::number(port).constData());
    if (gst_rtsp_server_attach(m_server, m_context) == 0)
        return false;
    m_thread = std::thread([this] { g_main_loop_run(m_loop); });
    return true;
}

void RelayServer::setCameras(const QHash<QString, SourceAddress>& cameras)
{
    const QStringList before = m_cameras.keys();
    for (const QString& path : before) {
        const auto now = cameras.constFind(path);
        if (now == cameras.constEnd() || !now->isSameStream(*m_cameras.constFind(path)))
            remove(path);
    }
    for (auto camera = cameras.constBegin(); camera != cameras.constEnd(); ++camera) {
        if (!m_cameras.contains(camera.key()))
            add(camera.key(), camera.value());
    }
    m_cameras = cameras;
}

void RelayServer::add(const QString& path, const SourceAddress& address)
{
    gst_rtsp_mount_points_add_factory(m_mounts, path.toUtf8().constData(),
                                      RelayFactory::make({address, m_server, m_context, m_tell}));
}

void RelayServer::remove(const QString& path)
{
    GstRTSPMediaFactory* factory = gst_rtsp_mount_points_match(m_mounts, path.toUtf8().constData(), nullptr);
    gst_rtsp_mount_points_remove_factory(m_mounts, path.toUtf8().constData());
    if (!factory)
        return;
    RelayFactory::end(factory);
    m_cameras.remove(path);
    g_object_unref(factory);
}
