#include "Scratch.h"
#include "cameras/SourceAddress.h"

// What is taken has a name and a place that can be written down and read again; what is refused says why, on
// one line and without a password.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QString error;
    const auto address = SourceAddress::parse(text, &error);
    if (address.has_value() != error.isEmpty() || error.contains('\n'))
        abort();
    if (!address)
        return 0;
    if (address->name().isEmpty() || address->name().contains("://") || address->name().contains('='))
        abort();
    if (address->kind() == SourceAddress::Kind::Synthetic ? address->number() < 1
                                                          : address->location().isEmpty())
        abort();
    if (SourceAddress::parse(address->name() + "=" + text.section('=', 1))->location() != address->location())
        abort();
    return 0;
}
