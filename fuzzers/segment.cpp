#include "Scratch.h"
#include "archive/SegmentContent.h"
#include "archive/SegmentReader.h"

// A recorded file that anybody may have written: it is looked into, and read with jumps.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    const QString path = scratch.Write("20260101-000000000.mkv", data, size);
    const SegmentContent content = contentOf(path);
    if ((content.kind == SegmentContent::Plays) != (content.durationMs > 0) || content.reason.contains('\n'))
        abort();
    if (content.kind == SegmentContent::Empty && content.durationMs != 0)
        abort();
    QString error;
    SegmentReader reader;
    if (!reader.open({path, 1000, 2000}, &error, SegmentReader::Expect::Recording))
        return 0;
    for (const qint64 ms : {1500, 0, 999'999}) {
        reader.seek(ms);
        for (int i = 0; i < 50; ++i) {
            const AVPacket* packet = reader.read();
            if (!packet)
                break;
            reader.momentOf(packet->pts, reader.isSound(*packet));
        }
    }
    return 0;
}
