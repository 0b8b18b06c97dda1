#include "packets/FFmpeg.h"

#include <mutex>

void prepareFFmpeg()
{
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_level(AV_LOG_QUIET);
        avdevice_register_all();
        avformat_network_init();
    });
}

QString errorText(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return QString::fromLocal8Bit(text).simplified();
}
