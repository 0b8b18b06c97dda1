#include "common/EngineText.h"

#include "common/Words.h"

#include <QRegularExpression>

namespace {

constexpr const char* EngineLines[] = {
    "cannot open: %1",
    "cannot open %1: %2",
    "cannot read: %1",
    "cannot read %1: %2",
    "cannot decode: %1",
    "cannot write %1: %2",
    "cannot end %1: %2",
    "cannot end %1",
    "cannot draw the scene: %1",
    "can't make the archive's directory %1",
    "can't open the archive's index: %1",
    "can't write the archive's index: %1",
    "can't lock the archive: %1",
    "the archive's index was damaged and is made anew",
    "the disk is too slow: pictures are left out",
    "it was made by a newer version",
    "an address is needed",
    "it is no address",
    "%1:// is no kind of stream",
    "the device is missing behind ://",
    "it begins with rtsp://, http:// or /",
    "it is no list of cameras",
    "it is of another version",
    "it is no file",
    "it is too large",
    "another program has changed it",
    "camera %1 is damaged",
    "a camera has no name",
    "two cameras are called %1",
    "no sound: %1",
    "this FFmpeg has no %1",
    "out of memory",
    "no answer",
    "refused",
    "not found",
    "wrong password",
    "the camera's certificate is not trusted",
    "the camera wants the password unprotected",
    "the camera can't do this",
    "the camera says: %1",
    "the camera's answer makes no sense",
    "this build has no ONVIF",
    "no such name",
    "no pictures in it",
    "its pictures are too large: %1 x %2",
    "no decoder for it",
    "nothing is recorded there",
    "nothing was kept",
    "stopped",
    "the stream has changed",
    "the stream has ended",
};

/// What stands in a line for the marks of its form; nothing if the line is of another form.
QRegularExpressionMatch match(const QString& form, const QString& line)
{
    const QString pattern = QRegularExpression::escape(form).replace("\\%1", "(.*)").replace("\\%2", "(.*)");
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::DotMatchesEverythingOption)
        .match(line);
}

} // namespace

QString engineText(const QString& english)
{
    for (size_t i = 0; i < std::size(EngineLines); ++i) {
        const QRegularExpressionMatch found = match(EngineLines[i], english);
        if (!found.hasMatch())
            continue;
        const QString text = word(EngineLines[i]);
        if (found.lastCapturedIndex() == 2)
            return text.arg(found.captured(1), engineText(found.captured(2)));
        return found.lastCapturedIndex() == 1 ? text.arg(engineText(found.captured(1))) : text;
    }
    return english;
}
