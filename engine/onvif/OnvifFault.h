#pragma once

#include <QString>

struct SoapNode;

/// Why a device did not do what it was asked for.
struct OnvifFault
{
    enum class Kind
    {
        None,
        NoAnswer,
        WrongPassword,
        NotSupported,
        Refused,     ///< for a reason of the device's own
        Nonsense,    ///< an answer that can't be read, or is too large
        Untrusted,   ///< a certificate that nobody vouches for; the reason is its SHA-256
        Unprotected, ///< it wants the password itself, over a line that others can read
        NotBuilt,    ///< this build has no ONVIF
    };

    Kind kind = Kind::None;
    QString reason; ///< the device's own words, one line

    explicit operator bool() const { return kind != Kind::None; }
    /// One line for an operator; empty without a fault.
    QString text() const;
};

/// What an answer's status and body say; `body` is the only element of a SOAP body.
OnvifFault faultOf(int httpStatus, const SoapNode& body);
