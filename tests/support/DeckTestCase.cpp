#include "support/DeckTestCase.h"

#include <QHash>
#include <QtTest>

namespace {

QtMessageHandler s_pPrevious = nullptr;
QStringList s_listUnexpected;
QHash<QString, int> s_mapExpected;

bool IsExpected(const QString& text)
{
    // The offscreen platform says this of windows with size limits and of pop-ups.
    if (text.startsWith("This plugin does not support "))
        return true;
    for (auto it = s_mapExpected.begin(); it != s_mapExpected.end(); ++it) {
        if (!text.contains(it.key()))
            continue;
        ++it.value();
        return true;
    }
    return false;
}

void Watch(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool warning = type == QtWarningMsg || type == QtCriticalMsg;
    if (warning && IsExpected(text))
        return;
    if (warning)
        s_listUnexpected.append(text);
    s_pPrevious(type, context, text);
}

} // namespace

void DeckTestCase::init()
{
    // QTEST_MAIN sets it, a client doesn't.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
    s_listUnexpected.clear();
    s_pPrevious = qInstallMessageHandler(Watch);
}

void DeckTestCase::cleanup()
{
    qInstallMessageHandler(s_pPrevious);
    if (!s_listUnexpected.isEmpty())
        QFAIL(qPrintable("Qt warned: " + s_listUnexpected.join(" | ")));
}

ExpectedWarning::ExpectedWarning(const QString& part) : m_strPart(part)
{
    s_mapExpected.insert(part, 0);
}

ExpectedWarning::~ExpectedWarning()
{
    s_mapExpected.remove(m_strPart);
}

int ExpectedWarning::Count() const
{
    return s_mapExpected.value(m_strPart);
}
