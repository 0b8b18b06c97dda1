#pragma once

#include <memory>

class SoundOutput;

/// Two short notes that an alarm is heard by, on a loudspeaker of their own, which is opened for the first.
class AlarmTone
{
public:
    void play();

private:
    std::shared_ptr<SoundOutput> m_output;
};
