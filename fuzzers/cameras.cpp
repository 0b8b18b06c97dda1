#include "Scratch.h"
#include "cameras/CameraFile.h"

#include <QFile>

// A list that is taken can be used, and comes back as it was written; one that is refused says why, on one
// line.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    QString error;
    const auto cameras = CameraFile(scratch.Write("cameras.json", data, size)).read(&error);
    if (cameras.has_value() != error.isEmpty() || error.contains('\n'))
        abort();
    if (!cameras)
        return 0;
    for (const CameraDescription& camera : *cameras) {
        QString fault;
        const auto address = camera.address("secret-word", &fault);
        if (fault.contains('\n') || fault.contains("secret-word"))
            abort();
        if (address && address->name() != camera.name)
            abort();
    }
    QFile::remove(scratch.Path("copy.json"));
    CameraFile copy(scratch.Path("copy.json"));
    if (!copy.write(*cameras, &error) || copy.read(&error) != cameras)
        abort();
    return 0;
}
