#include "common/Words.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

using Words = QMap<QString, QString>;

QString Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Captured(const QString& text, const QString& pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        found.append(match.captured(match.lastCapturedIndex()));
    }
    return found;
}

/// The words of a table in a source; ratios such as 4:3 read the same everywhere.
QSet<QString> WordsOfTable(const QString& source, const QString& table)
{
    QSet<QString> words;
    for (const QString& content : Captured(source, "\\b" + table + "\\[\\] = \\{([^}]*)\\}")) {
        for (const QString& word : Captured(content, "\"([^\"]*[a-z][^\"]*)\""))
            words.insert(word);
    }
    return words;
}

/// What one source asks for; a call in another form comes back as it is written.
QSet<QString> WordsOfSource(const QString& source)
{
    QSet<QString> words;
    for (const QString& call : Captured(source, "\\bWord\\((?!const char)([^\"][^)]*|\"[^\"]*\"\\)?)")) {
        if (call.startsWith('"') && call.endsWith("\")"))
            words.insert(call.mid(1, call.size() - 3));
        else if (const QString table = call.section('[', 0, 0); !WordsOfTable(source, table).isEmpty())
            words.unite(WordsOfTable(source, table));
        else
            words.insert("Word(" + call);
    }
    return words;
}

QSet<QString> WordsOfClient()
{
    QSet<QString> words;
    for (QDirIterator it(QFINDTESTDATA("../../client"), {"*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        words.unite(WordsOfSource(Content(it.next())));
    return words;
}

QString FileOf(const QString& language)
{
    return QFINDTESTDATA("../../languages/" + language + ".ini");
}

/// The section "Client" of a language's file.
Words Translations(const QString& language)
{
    Words words;
    const QStringList lines = Content(FileOf(language)).section("[Client]\n", 1).split('\n');
    for (const QString& line : lines) {
        if (!line.isEmpty())
            words.insert(line.section('=', 0, 0), line.section('=', 1));
    }
    return words;
}

QString Joined(const QSet<QString>& words)
{
    return QStringList(words.values()).join(", ");
}

/// The keys that open the menus of the window's bar.
QStringList MenuKeys(const Words& words)
{
    const QString source = Content(QFINDTESTDATA("../../client/window/MainWindow.cpp"));
    QStringList keys;
    for (const QString& title : Captured(source, "(?:AddChoices|addMenu)\\(Word\\(\"([^\"]*)\""))
        keys += Captured(words.value(title, title).toUpper(), "&(.)");
    return keys;
}

} // namespace

/// The client's own words in every language.
class tst_words : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void callsAreRead_data();
    void callsAreRead();
    void everyWordIsTranslated_data();
    void everyWordIsTranslated();
    void marksStay_data() { everyWordIsTranslated_data(); }
    void marksStay();
    void menusOpenByKeysOfTheirOwn_data();
    void menusOpenByKeysOfTheirOwn();
    void readsASectionOfItsOwn();
};

void tst_words::callsAreRead_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("word");

    QTest::newRow("text") << "Word(\"Live (now)\").arg(1)"
                          << "Live (now)";
    QTest::newRow("table") << "Names[] = {\"Fill\", \"4:3\"}; Word(Names[i])"
                           << "Fill";
    QTest::newRow("no table") << "Word(Names[i])"
                              << "Word(Names[i]";
    QTest::newRow("variable") << "Word(text)"
                              << "Word(text";
    QTest::newRow("text in two") << "Word(\"Live \"\n\"now\")"
                                 << "Word(\"Live \"";
    QTest::newRow("definition") << "QString Word(const char* english)" << QString();
    QTest::newRow("another function") << "LoadWords(path); KeyWord(\"a\")" << QString();
}

void tst_words::callsAreRead()
{
    QFETCH(QString, source);
    QFETCH(QString, word);
    QCOMPARE(Joined(WordsOfSource(source)), word);
}

void tst_words::everyWordIsTranslated_data()
{
    QTest::addColumn<QString>("language");
    for (const char* language : {"Arabic", "Chinese", "French", "German", "Spanish"})
        QTest::newRow(language) << language;
}

void tst_words::everyWordIsTranslated()
{
    QFETCH(QString, language);
    const QStringList translated = Translations(language).keys();
    const QSet<QString> given(translated.begin(), translated.end());
    const QSet<QString> asked = WordsOfClient();
    QVERIFY(asked.contains("Live"));
    QVERIFY(asked.contains("Fill"));
    QCOMPARE(Joined(asked - given), QString());
    QCOMPARE(Joined(given - asked), QString());
}

void tst_words::marksStay()
{
    QFETCH(QString, language);
    const Words words = Translations(language);
    for (auto it = words.begin(); it != words.end(); ++it) {
        const QString mark = "(%[0-9n]|&)";
        QStringList wanted = Captured(it.key(), mark);
        QStringList found = Captured(it.value(), mark);
        wanted.sort();
        found.sort();
        QVERIFY2(found == wanted, qPrintable(it.value()));
        QVERIFY2(!it.value().contains(QRegularExpression("[\\[\\]=]")), qPrintable(it.value()));
    }
}

void tst_words::menusOpenByKeysOfTheirOwn_data()
{
    everyWordIsTranslated_data();
    QTest::newRow("English") << "English";
}

void tst_words::menusOpenByKeysOfTheirOwn()
{
    QFETCH(QString, language);
    const QStringList keys = MenuKeys(Translations(language));
    QVERIFY(keys.size() >= 5);
    QVERIFY2(QSet<QString>(keys.begin(), keys.end()).size() == keys.size(), qPrintable(keys.join("")));
}

void tst_words::readsASectionOfItsOwn()
{
    QCOMPARE(Word("Tour"), QString("Tour"));
    LoadWords(QString());
    LoadWords("/no/such/file.ini");
    QCOMPARE(Word("Tour"), QString("Tour"));
    const Words words = Translations("German");
    LoadWords(FileOf("German"));
    for (auto it = words.begin(); it != words.end(); ++it)
        QCOMPARE(Word(qPrintable(it.key())), it.value());
    QCOMPARE(Word("channels"), QString("channels"));
    QCOMPARE(Word("a word of nobody's"), QString("a word of nobody's"));
}

int main(int argc, char** argv)
{
    return RunTests<tst_words>(argc, argv);
}

#include "tst_words.moc"
