#include "RelayFactory.h"

#include "RelayFeed.h"

#include <atomic>

namespace {

using RelayFactory::Camera;

constexpr const char* CameraKey = "panedeck-camera";
constexpr const char* FeedKey = "panedeck-feed";
constexpr const char* FactoryKey = "panedeck-factory";

template <class Thing> void destroy(gpointer thing)
{
    delete static_cast<Thing*>(thing);
}

struct Fate
{
    std::atomic<int> losses{0};
    std::atomic<bool> isGone{false};
};

struct Served
{
    Camera camera;
    std::shared_ptr<Fate> fate = std::make_shared<Fate>();
};

const Served& servedBy(GstRTSPMediaFactory* factory)
{
    return *static_cast<Served*>(g_object_get_data(G_OBJECT(factory), CameraKey));
}

/// What is shared: one pipeline whatever query an address has, and a new one after a loss, as somebody may
/// stay with the lost one.
char* createKey(GstRTSPMediaFactory* factory, const GstRTSPUrl*)
{
    return g_strdup_printf("%d", servedBy(factory).fate->losses.load());
}

/// In the thread of who looks first, which waits for the camera.
GstElement* createElement(GstRTSPMediaFactory* factory, const GstRTSPUrl*)
{
    const auto& [camera, fate] = servedBy(factory);
    auto feed = std::make_unique<RelayFeed>(camera.address, [fate = fate] { return fate->isGone.load(); });
    QString error;
    GstElement* bin = feed->open(&error);
    camera.tell(camera.address.name() + (bin ? " is looked at" : ": " + error));
    if (bin)
        g_object_set_data_full(G_OBJECT(bin), FeedKey, feed.release(), destroy<RelayFeed>);
    return bin;
}

/// What an order to the server's thread needs to live that long.
struct Lost
{
    GstRTSPServer* server;
    GWeakRef media;

    Lost(const Camera& camera, GstRTSPMedia* lost)
        : server(static_cast<GstRTSPServer*>(g_object_ref(camera.server)))
    {
        g_weak_ref_init(&media, lost);
    }
    ~Lost()
    {
        g_weak_ref_clear(&media);
        g_object_unref(server);
    }
    Lost(const Lost&) = delete;
    Lost& operator=(const Lost&) = delete;
};

using IsMeant = std::function<bool(GstRTSPMedia*)>;

GstRTSPFilterResult keepMeant(GstRTSPSession*, GstRTSPSessionMedia* media, gpointer isMeant)
{
    const bool isIt = (*static_cast<const IsMeant*>(isMeant))(gst_rtsp_session_media_get_media(media));
    return isIt ? GST_RTSP_FILTER_REF : GST_RTSP_FILTER_KEEP;
}

GstRTSPFilterResult keepSession(GstRTSPClient*, GstRTSPSession* session, gpointer isMeant)
{
    GList* found = gst_rtsp_session_filter(session, keepMeant, isMeant);
    const bool hasSome = found != nullptr;
    g_list_free_full(found, g_object_unref);
    return hasSome ? GST_RTSP_FILTER_REF : GST_RTSP_FILTER_KEEP;
}

GstRTSPFilterResult keepClient(GstRTSPServer*, GstRTSPClient* client, gpointer isMeant)
{
    GList* found = gst_rtsp_client_session_filter(client, keepSession, isMeant);
    const bool hasSome = found != nullptr;
    g_list_free_full(found, g_object_unref);
    return hasSome ? GST_RTSP_FILTER_REF : GST_RTSP_FILTER_KEEP;
}

/// Those for whom it is true of what they look at.
void cutOff(GstRTSPServer* server, const IsMeant& isMeant)
{
    IsMeant meant = isMeant;
    GList* clients = gst_rtsp_server_client_filter(server, keepClient, &meant);
    for (GList* one = clients; one; one = one->next)
        gst_rtsp_client_close(GST_RTSP_CLIENT(one->data));
    g_list_free_full(clients, g_object_unref);
}

/// Who looked is to come again, and finds out what there is then.
gboolean endLost(gpointer order)
{
    auto* lost = static_cast<Lost*>(order);
    gpointer media = g_weak_ref_get(&lost->media);
    if (!media)
        return G_SOURCE_REMOVE;
    cutOff(lost->server, [media](GstRTSPMedia* other) { return other == media; });
    g_object_unref(media);
    return G_SOURCE_REMOVE;
}

/// Never in the thread that asks for it, not even when the server's has ended: what goes with who is cut off
/// waits for that one.
void orderEnd(Lost* lost, GMainContext* context)
{
    GSource* order = g_idle_source_new();
    g_source_set_callback(order, endLost, lost, destroy<Lost>);
    g_source_attach(order, context);
    g_source_unref(order);
}

RelayFeed* feedOf(GstRTSPMedia* media)
{
    GstElement* bin = gst_rtsp_media_get_element(media);
    auto* feed = static_cast<RelayFeed*>(g_object_get_data(G_OBJECT(bin), FeedKey));
    gst_object_unref(bin);
    return feed;
}

void endFeed(GstRTSPMedia* media, gpointer)
{
    feedOf(media)->stop();
}

void configure(GstRTSPMediaFactory* factory, GstRTSPMedia* media, gpointer)
{
    const auto& [camera, fate] = servedBy(factory);
    g_object_set_data(G_OBJECT(media), FactoryKey, factory);
    g_signal_connect(media, "unprepared", G_CALLBACK(endFeed), nullptr);
    auto* lost = new Lost(camera, media);
    const std::shared_ptr<GMainContext> context(g_main_context_ref(camera.context), g_main_context_unref);
    feedOf(media)->start([lost, context, fate = fate, name = camera.address.name(), tell = camera.tell] {
        ++fate->losses;
        tell(name + " is looked at no more");
        orderEnd(lost, context.get());
    });
}

void initialize(gpointer type, gpointer)
{
    auto* factory = static_cast<GstRTSPMediaFactoryClass*>(type);
    factory->create_element = createElement;
    factory->gen_key = createKey;
}

GType factoryType()
{
    static const GType type = g_type_register_static_simple(
        GST_TYPE_RTSP_MEDIA_FACTORY, "PaneDeckRelayFactory", sizeof(GstRTSPMediaFactoryClass), initialize,
        sizeof(GstRTSPMediaFactory), nullptr, GTypeFlags(0));
    return type;
}

} // namespace

GstRTSPMediaFactory* RelayFactory::make(const Camera& camera)
{
    auto* factory = static_cast<GstRTSPMediaFactory*>(g_object_new(factoryType(), nullptr));
    g_object_set_data_full(G_OBJECT(factory), CameraKey, new Served{camera}, destroy<Served>);
    gst_rtsp_media_factory_set_shared(factory, true);
    gst_rtsp_media_factory_set_latency(factory, 0);
    gst_rtsp_media_factory_set_protocols(factory, GST_RTSP_LOWER_TRANS_TCP);
    gst_rtsp_media_factory_add_role(factory, Role, GST_RTSP_PERM_MEDIA_FACTORY_ACCESS, G_TYPE_BOOLEAN, TRUE,
                                    GST_RTSP_PERM_MEDIA_FACTORY_CONSTRUCT, G_TYPE_BOOLEAN, TRUE, nullptr);
    g_signal_connect(factory, "media-configure", G_CALLBACK(configure), nullptr);
    return factory;
}

void RelayFactory::end(GstRTSPMediaFactory* factory)
{
    const auto& [camera, fate] = servedBy(factory);
    fate->isGone = true;
    cutOff(camera.server, [factory](GstRTSPMedia* media) {
        return g_object_get_data(G_OBJECT(media), FactoryKey) == factory;
    });
}
