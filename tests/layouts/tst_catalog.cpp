#include "layouts/CSplitCatalog.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"

class tst_catalog : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsStyle();
    void startsWithoutInstallation();
    void customLayoutsStartAsCopies();
};

void tst_catalog::findsStyle()
{
    // The light one isn't there; without a known number the root itself is taken. Each content has a size of
    // its own, as QSettings takes a file of the same size and millisecond for the same.
    const std::tuple<const char*, int, const char*> rows[] = {
        {"[style]\nstyle=1\n", 1, "ResourcesBlank"},
        {"[style]\nstyle = 2\n", 2, ""},
        {"[style]\nstyle=17\n", 0, "."},
        {"[style]\nstyle=dark\n", 0, "."},
        {"[style]\nx=\xEF\xBB\xBF@Variant(\\0\\0\\0\\x1\\x1)\nstyle=1\n", 0, "."},
        {"[window]\nx=@Variant(\\0\\0\\0\\x1\\x1)\n[style]\nstyle=1\n", 1, "ResourcesBlank"},
        {"style=1\n", 0, "."}};
    for (const auto& [config, style, directory] : rows) {
        Installation installation(1);
        installation.Write("Organization/Config.ini", config);
        const CSplitCatalog* catalog = CSplitCatalog::Instance();
        QCOMPARE(catalog->styleId, style);
        const QString path = QDir::cleanPath(installation.Root() + "/" + directory);
        QCOMPARE(catalog->resourceDir, *directory ? path : QString());
        QCOMPARE(catalog->splitFilePath, installation.Root() + "/Organization/SplitInfo.xml");
        QCOMPARE(catalog->normalLayouts[9].count, 0);
    }
}

void tst_catalog::startsWithoutInstallation()
{
    const Installation installation(0);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    QCOMPARE(catalog->splitFilePath, QString("/SplitInfo.xml"));
    catalog->LoadLayouts();
    QCOMPARE(catalog->Layout(1, 9).count, 64);
}

void tst_catalog::customLayoutsStartAsCopies()
{
    Installation installation(1);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->LoadLayouts();
    catalog->customLayouts[3].cells.removeLast();
    QCOMPARE(catalog->normalLayouts[3].cells.size(), 8);
    catalog->LoadLayouts();
    QVERIFY(catalog->customLayouts[3] == catalog->normalLayouts[3]);
}

QTEST_MAIN(tst_catalog)

#include "tst_catalog.moc"
