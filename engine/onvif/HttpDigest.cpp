#include "onvif/HttpDigest.h"

#include <QCryptographicHash>
#include <QHash>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace {

using Options = QHash<QByteArray, QByteArray>;

/// The header may go on with other ways, each a word without a value.
Options optionsFrom(const QString& header, int start)
{
    static const QRegularExpression option(R"re(\G[\s,]*(\w+)\s*=\s*(?:"([^"]*)"|([^\s,"]+)))re");
    Options options;
    auto match = option.match(header, start);
    for (; match.hasMatch(); match = option.match(header, match.capturedEnd()))
        options.insert(match.captured(1).toLower().toLatin1(),
                       (match.captured(2) + match.captured(3)).toLatin1());
    return options;
}

QByteArray quoted(const QString& text)
{
    QByteArray bytes = text.simplified().toUtf8();
    return '"' + bytes.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

} // namespace

std::optional<HttpDigest> HttpDigest::read(const QByteArray& header)
{
    static const QRegularExpression way(R"((?:^|[\s,])Digest\s)", QRegularExpression::CaseInsensitiveOption);
    const QString text = QString::fromLatin1(header);
    for (auto match = way.match(text); match.hasMatch(); match = way.match(text, match.capturedEnd())) {
        const Options options = optionsFrom(text, match.capturedEnd());
        const QByteArray algorithm = options["algorithm"].toUpper();
        const QList<QByteArray> qualities = options["qop"].toLower().replace(' ', "").split(',');
        const bool isKnown = algorithm.isEmpty() || algorithm == "MD5" || algorithm == "SHA-256";
        if (!isKnown || options["nonce"].isEmpty() ||
            !(options["qop"].isEmpty() || qualities.contains("auth")))
            continue;
        HttpDigest asked;
        asked.m_realm = options["realm"];
        asked.m_nonce = options["nonce"];
        asked.m_opaque = options["opaque"];
        asked.m_algorithm = algorithm;
        asked.m_hasQuality = qualities.contains("auth");
        return asked;
    }
    return std::nullopt;
}

QByteArray HttpDigest::digest(const QByteArray& text) const
{
    const auto way = m_algorithm == "SHA-256" ? QCryptographicHash::Sha256 : QCryptographicHash::Md5;
    return QCryptographicHash::hash(text, way).toHex();
}

QByteArray HttpDigest::answer(const QUrl& address, const QString& user, const QString& password)
{
    QByteArray uri = address.path(QUrl::FullyEncoded).toLatin1();
    if (uri.isEmpty())
        uri = "/";
    if (address.hasQuery())
        uri += '?' + address.query(QUrl::FullyEncoded).toLatin1();
    const QByteArray count = QByteArray::number(++m_count, 16).rightJustified(8, '0');
    const QByteArray own = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    const QByteArray quality = m_hasQuality ? m_nonce + ':' + count + ':' + own + ":auth:" : m_nonce + ':';
    const QByteArray who = digest(user.toUtf8() + ':' + m_realm + ':' + password.toUtf8());
    QByteArray line = "Digest username=" + quoted(user) + ", realm=\"" + m_realm + "\", nonce=\"" + m_nonce +
                      "\", uri=\"" + uri + "\", response=\"" +
                      digest(who + ':' + quality + digest("POST:" + uri)) + '"';
    if (m_hasQuality)
        line += ", qop=auth, nc=" + count + ", cnonce=\"" + own + '"';
    if (!m_algorithm.isEmpty())
        line += ", algorithm=" + m_algorithm;
    if (!m_opaque.isEmpty())
        line += ", opaque=\"" + m_opaque + '"';
    return line;
}
