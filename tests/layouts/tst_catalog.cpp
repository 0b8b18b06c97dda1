#include "layouts/CSplitCatalog.h"
#include "layouts/Tilings.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"

class tst_catalog : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsStyle_data();
    void findsStyle();
    void builtInLayoutsTileTheirGrid();
    void customLayoutsStartAsCopies();
};

void tst_catalog::findsStyle_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("directory");
    QTest::newRow("dark") << QByteArray("[style]\nstyle=1\n") << 1 << "ResourcesBlank";
    QTest::newRow("light, but not there") << QByteArray("[style]\nstyle=2\n") << 2 << QString();
    QTest::newRow("unknown number") << QByteArray("[style]\nstyle=7\n") << 0 << ".";
    QTest::newRow("no number") << QByteArray("[style]\nstyle=dark\n") << 0 << ".";
    QTest::newRow("key outside its group") << QByteArray("style=1\n") << 0 << ".";
}

void tst_catalog::findsStyle()
{
    QFETCH(QByteArray, config);
    QFETCH(int, style);
    QFETCH(QString, directory);
    Installation installation(1);
    installation.Write("Organization/Config.ini", config);
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    QCOMPARE(catalog->styleId, style);
    const QString expected =
        directory.isEmpty() ? QString() : QDir::cleanPath(installation.Root() + "/" + directory);
    QCOMPARE(catalog->resourceDir, expected);
    QCOMPARE(catalog->splitFilePath, installation.Root() + "/Organization/SplitInfo.xml");
    QVERIFY(!catalog->thumbnailSize.isValid());
    QCOMPARE(catalog->normalLayouts[9].count, 0);
}

void tst_catalog::builtInLayoutsTileTheirGrid()
{
    Installation installation(0);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    QCOMPARE(catalog->splitFilePath, QString("/SplitInfo.xml"));
    catalog->LoadLayouts();
    const int counts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};
    for (int index = 0; index < CSplitCatalog::LayoutCount; ++index) {
        const SplitLayout& layout = catalog->Layout(0, index);
        QCOMPARE(layout.count, counts[index]);
        QVERIFY(Tiles(layout));
    }
    QCOMPARE(catalog->Layout(0, 2).cells.at(3), (SplitCell{4, 0, 6, 2}));
    QCOMPARE(catalog->Layout(0, 3).cells.at(1), (SplitCell{0, 3, 1, 4}));
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
