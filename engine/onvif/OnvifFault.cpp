#include "onvif/OnvifFault.h"

#include "onvif/SoapNode.h"

namespace {

bool containsAny(const QString& text, std::initializer_list<const char*> parts)
{
    for (const char* part : parts) {
        if (text.contains(QLatin1String(part), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

/// The codes of a fault, the outermost first: they lie in each other.
QString codesOf(const SoapNode& fault)
{
    QString codes = fault.at("faultcode").text;
    const SoapNode* code = &fault.at("Code");
    while (!code->name.isEmpty()) {
        codes += ' ' + code->at("Value").text;
        code = &code->at("Subcode");
    }
    return codes;
}

} // namespace

QString OnvifFault::text() const
{
    switch (kind) {
    case Kind::None:
        return {};
    case Kind::NoAnswer:
        return "no answer";
    case Kind::WrongPassword:
        return "wrong password";
    case Kind::NotSupported:
        return "the camera can't do this";
    case Kind::Refused:
        return reason.isEmpty() ? QString("refused") : "the camera says: " + reason;
    case Kind::Nonsense:
        return "the camera's answer makes no sense";
    case Kind::Untrusted:
        return "the camera's certificate is not trusted";
    case Kind::Unprotected:
        return "the camera wants the password unprotected";
    case Kind::NotBuilt:
        return "this build has no ONVIF";
    }
    return {};
}

OnvifFault faultOf(int httpStatus, const SoapNode& body)
{
    using Kind = OnvifFault::Kind;
    const bool isFault = body.name == "Fault";
    const SoapNode& reason = body.at("Reason/Text");
    const QString line = reason.name.isEmpty() ? body.at("faultstring").line() : reason.line();
    const QString codes = isFault ? codesOf(body) : QString();
    if (httpStatus == 401 || httpStatus == 403 ||
        containsAny(codes, {"NotAuthorized", "FailedAuthentication", "InvalidSecurity", "MessageExpired"}))
        return {Kind::WrongPassword, line};
    if (httpStatus == 404 || httpStatus == 405 || httpStatus == 501 ||
        containsAny(codes, {"NotSupported", "UnknownAction", "NotImplemented", "NoSuchService"}))
        return {Kind::NotSupported, line};
    if (isFault)
        return {Kind::Refused, line};
    return body.name.isEmpty() ? OnvifFault{Kind::Nonsense, {}} : OnvifFault{};
}
