#include "packets/InputStreams.h"

#include "packets/MatroskaWriter.h"

namespace {

std::shared_ptr<const StreamFormat> formatOf(const AVStream& stream,
                                             std::shared_ptr<const StreamFormat> sound = nullptr)
{
    return StreamFormat::of(*stream.codecpar, stream.time_base, std::move(sound));
}

} // namespace

InputStreams::InputStreams(AVFormatContext& input)
    : m_pictures(av_find_best_stream(&input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0)),
      m_sound(av_find_best_stream(&input, AVMEDIA_TYPE_AUDIO, -1, m_pictures, nullptr, 0))
{
    for (int i = 0; i < int(input.nb_streams); ++i)
        input.streams[i]->discard = i == m_pictures || i == m_sound ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    if (m_sound >= 0)
        m_soundFormat = formatOf(*input.streams[m_sound]);
    const bool isKept = m_soundFormat && MatroskaWriter::holds(*m_soundFormat);
    if (m_pictures >= 0)
        m_format = formatOf(*input.streams[m_pictures], isKept ? m_soundFormat : nullptr);
}
