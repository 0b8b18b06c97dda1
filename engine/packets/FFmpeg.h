#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavdevice/avdevice.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <QString>

#include <memory>

template <auto Free> struct AvDelete
{
    template <class T> void operator()(T* object) const { Free(&object); }
};

struct SwsDelete
{
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};

using AvFrame = std::unique_ptr<AVFrame, AvDelete<av_frame_free>>;
using AvBuffer = std::unique_ptr<AVBufferRef, AvDelete<av_buffer_unref>>;
using AvPacket = std::unique_ptr<AVPacket, AvDelete<av_packet_free>>;
using AvCodec = std::unique_ptr<AVCodecContext, AvDelete<avcodec_free_context>>;
using AvInput = std::unique_ptr<AVFormatContext, AvDelete<avformat_close_input>>;
using AvParameters = std::unique_ptr<AVCodecParameters, AvDelete<avcodec_parameters_free>>;
using AvScaler = std::unique_ptr<SwsContext, SwsDelete>;

constexpr AVRational Microseconds{1, 1000000};

/// Registers devices and protocols and silences FFmpeg's log; any thread, any number of times.
void prepareFFmpeg();

/// FFmpeg's own words for an error number, on one line.
QString errorText(int error);
