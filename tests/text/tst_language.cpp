#include "support/DeckTestCase.h"
#include "text/CLanguageFile.h"
#include "text/LangText.h"

#include <QTemporaryFile>

class tst_language : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsFile_data();
    void readsFile();
    void readsNothing();
    void readsHugeLines();
    void textsOfProcess();

private:
    QString Write(const QByteArray& content);

    QTemporaryFile m_file;
};

QString tst_language::Write(const QByteArray& content)
{
    if (!m_file.open() || !m_file.resize(0) || m_file.write(content) != content.size())
        qFatal("can't write the language file");
    m_file.close();
    return m_file.fileName();
}

void tst_language::readsFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& content, const char* key, const char* text) {
        QTest::newRow(name) << content << QString::fromUtf8(key) << QString::fromUtf8(text);
    };
    row("Windows line ends", "[String]\r\na=b\r\n", "String/a", "b");
    row("carriage return inside", "[String]\na=b\rc=d\n", "String/a", "b\rc");
    row("text ends at the second =", "[String]\na=b=c=d\n", "String/a", "b");
    row("empty text", "[String]\na=\n", "String/a", "");
    row("empty text over an earlier one", "[String]\na=b\na=\n", "String/a", "");
    row("blanks before the =", "[String]\na =b\n", "String/a ", "b");
    row("last of two sections", "[String]\na=b\n[x]\na=y\n[String]\na=c\n", "String/a", "c");
    row("case of the key", "[String]\nA=b\n", "String/a", "");
    row("before any section", "a=b\n[String]\n", "/a", "b");
    row("no comments", "[String]\n;a=b\n", "String/;a", "b");
    row("entry with brackets opens a section", "[String]\nName[1]=x\na=b\n", "Name1=x/a", "b");
    row("many brackets", "[[Str]in[g]\na=b\n", "String/a", "b");
    row("one bracket only", "[String]\na[=b\n", "String/a[", "b");
    row("beyond ASCII", "[String]\nß=关闭\n", "String/ß", "关闭");
    row("UTF-16", QByteArray("\xff\xfe[\0S\0]\0\n\0a\0=\0\xdf\0\n\0", 16), "S/a", "ß");
    row("UTF-16 cut in half", QByteArray("\xff\xfe[\0S\0]\0\n\0a\0=\0b", 15), "S/a", "");
    row("null characters", QByteArray("[S]\na\0=b\0c\n", 11), "S/a", "");
    row("broken UTF-8", "[String]\na\xff=\xc3\nb=c\n", "String/b", "c");
}

void tst_language::readsFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, key);
    QFETCH(QString, text);
    QCOMPARE(CLanguageFile(Write(content)).GetValue(key), text);
}

void tst_language::readsNothing()
{
    for (const QString& path : {QString(), QString("/no/such/file.ini"), QDir::tempPath()})
        QCOMPARE(CLanguageFile(path).GetValue("String/a"), QString());
}

void tst_language::readsHugeLines()
{
    const QByteArray signs(2000000, '=');
    const CLanguageFile file(Write("[String]\n" + signs + "\na=" + QByteArray(2000000, 'x') + "\n"));
    QCOMPARE(file.GetValue("String/a").size(), 2000000);
    QCOMPARE(file.GetValue("String/"), QString());
}

// The one file of the process: the steps can't be taken apart.
void tst_language::textsOfProcess()
{
    QCOMPARE(LangText("PaneDeck.Ok"), QString("PaneDeck.Ok"));
    SetLanguageFile(QString());
    SetLanguageFile(QString());
    QCOMPARE(LangText("PaneDeck.Ok"), QString("PaneDeck.Ok"));
    SetLanguageFile(Write("[String]\nPaneDeck.Ok=Yes\nPaneDeck.Open=\n%1=percent\n[x]\na=b\n"));
    QCOMPARE(LangText("PaneDeck.Ok"), QString("Yes"));
    QCOMPARE(LangText("PaneDeck.Open"), QString("PaneDeck.Open"));
    QCOMPARE(LangText("%1"), QString("percent"));
    QCOMPARE(LangText("panedeck.ok"), QString("panedeck.ok"));
    QCOMPARE(LangText("a"), QString("a"));
    QCOMPARE(LangText(QString()), QString());
    SetLanguageFile(Write("[String]\nPaneDeck.Ok=No\n"));
    QCOMPARE(LangText("PaneDeck.Ok"), QString("Yes"));
}

QTEST_MAIN(tst_language)

#include "tst_language.moc"
