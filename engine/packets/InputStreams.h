#pragma once

#include "packets/EncodedPacket.h"

/// The streams of an open input that are played: its pictures, and the sound that belongs to them.
class InputStreams
{
public:
    /// Chooses them, and leaves all other streams out of what is read. Without pictures, or if memory is
    /// short, format() is null.
    explicit InputStreams(AVFormatContext& input);
    InputStreams() = default;

    int pictures() const { return m_pictures; }
    /// Below 0 without sound.
    int sound() const { return m_sound; }
    /// That of the pictures; its sound is only there if a recording can hold it.
    const std::shared_ptr<const StreamFormat>& format() const { return m_format; }
    /// That of the sound; null without any.
    const std::shared_ptr<const StreamFormat>& soundFormat() const { return m_soundFormat; }

private:
    int m_pictures = -1;
    int m_sound = -1;
    std::shared_ptr<const StreamFormat> m_format;
    std::shared_ptr<const StreamFormat> m_soundFormat;
};
