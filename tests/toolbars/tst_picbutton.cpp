#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "toolbars/CVideoPicButton.h"

#include <QRegularExpression>

#include <climits>

namespace {

const QStringList KEYS = {"Normal",      "Hover",      "Click",      "Disable",
                          "CheckNormal", "CheckHover", "CheckClick", "CheckDisable"};

QColor ColorOf(int state)
{
    return QColor(10 + 30 * state, 0, 0);
}

/// The state whose picture fills the button's background, -1 if none does.
int ShownState(const QWidget& button)
{
    const QImage picture = button.palette().brush(button.backgroundRole()).textureImage();
    for (int state = 0; state < KEYS.size(); ++state) {
        if (!picture.isNull() && picture.pixelColor(0, 0) == ColorOf(state))
            return state;
    }
    return -1;
}

void Do(CVideoPicButton& button, QChar deed)
{
    const QPoint middle(5, 5);
    switch (deed.toLatin1()) {
    case 'E':
        return Mouse::Enter(&button);
    case 'L':
        return Mouse::Leave(&button);
    case 'P':
        return Mouse::Press(&button, middle);
    case 'R':
        return Mouse::Release(&button, middle);
    case 'S':
        return button.resize(button.size() + QSize(1, 1));
    case 'c':
        return button.setChecked(!button.isChecked());
    case 'd':
        return button.setEnabled(false);
    default:
        button.SetBtnEnabled(deed == '+');
    }
}

} // namespace

class tst_picbutton : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsStates();
    void writesSheets();
    void takesSheetsAfterFirstPicture();
    void ignoresStatesWithoutPicture();
    void livesWithoutFiles();
    void fitsPictureToSize();

private:
    void WriteSection(const QByteArray& colors);

    QScopedPointer<Installation> m_pInstallation;
};

void tst_picbutton::init()
{
    DeckTestCase::init();
    m_pInstallation.reset(new Installation);
    for (int state = 0; state < KEYS.size(); ++state)
        m_pInstallation->WritePicture(QString("Resources/buttons/%1.png").arg(state), 4, 4, ColorOf(state));
    WriteSection(QByteArray());
}

void tst_picbutton::cleanup()
{
    m_pInstallation.reset();
    DeckTestCase::cleanup();
}

void tst_picbutton::WriteSection(const QByteArray& colors)
{
    QByteArray section = "[Bar]\n";
    for (int state = 0; state < KEYS.size(); ++state)
        section += KEYS.at(state).toLatin1() + "=" + QByteArray::number(state) + ".png\n";
    m_pInstallation->Write("Resources/buttons/Pic.Conf", section + colors);
}

void tst_picbutton::showsStates()
{
    struct
    {
        const char* name;
        bool checkable;
        const char* deeds;
        const char* states;
    } const rows[] = {
        {"click", false, "EPRL", "1210"},
        {"press, leave, let go outside", false, "EPLR", "1220"},
        {"press, leave, come back", false, "EPLE", "1221"},
        {"click toggles after the release shows", true, "EPRL", "1264"},
        {"click while checked", true, "cLEPRE", "645621"},
        {"checked, let go outside", true, "cEPLR", "65662"},
        {"toggled by the program", true, "cc", "62"},
        {"disabled under the mouse", false, "E-LES", "13333"},
        {"enabled under the mouse", false, "E-+S", "1301"},
        {"disabled while checked", true, "c-ELS+", "677774"},
        {"disabled by Qt, then resized", true, "dS", "03"},
        {"resized while pressed", false, "EPSLS", "12222"},
        {"resized under the mouse, checked", true, "cES", "655"},
        {"resized at rest", true, "cS", "64"},
    };
    for (const auto& row : rows) {
        CVideoPicButton button;
        button.setCheckable(row.checkable);
        button.resize(20, 20);
        button.show();
        button.LoadPictures("Bar", false, "Pic.Conf");
        QVERIFY2(ShownState(button) == 0, row.name);
        QString seen;
        for (const QChar deed : QString(row.deeds)) {
            Do(button, deed);
            seen += QString::number(ShownState(button));
        }
        QCOMPARE(seen, QString(row.states));
    }
}

void tst_picbutton::writesSheets()
{
    const char* const all = "FontNormal=red\nFontHover=#00ff00\nFontClick=blue\nFontDisable=gray\n";
    const std::tuple<bool, const char*, const char*, const char*> rows[] = {
        {true, all, " color:#00ff00;PIC1", " color:blue;PIC6"},
        {true, "FontHover=red\n", "PIC1", "PIC6"},
        {false, all, " color:#00ff00", " color:blue"},
        {false, "", "", ""},
        {true, "FontNormal=red\nFontClick=blue\n", " color:;PIC1", " color:blue;PIC6"}};
    const auto inFull = [&](QString text) {
        const QString dir = m_pInstallation->Root() + "/Resources/buttons/";
        text.replace(QRegularExpression("PIC(.)"), "background-image:url(" + dir + "\\1.png)");
        return text.isEmpty() ? text : "QToolButton{" + text + "}";
    };
    for (const auto& [sheet, colors, hover, checkedClick] : rows) {
        WriteSection(colors);
        CVideoPicButton button;
        button.setCheckable(true);
        button.LoadPictures("Bar", sheet, "Pic.Conf");
        button.ShowState(1);
        QCOMPARE(button.styleSheet(), inFull(hover));
        QCOMPARE(ShownState(button), sheet ? 0 : 1);
        button.ShowState(6);
        QCOMPARE(button.styleSheet(), inFull(checkedClick));
    }
}

void tst_picbutton::takesSheetsAfterFirstPicture()
{
    CVideoPicButton button;
    button.LoadPictures("Bar", true, "Pic.Conf");
    QCOMPARE(ShownState(button), 0);
    QCOMPARE(button.styleSheet(), QString());
    button.show();
    QVERIFY(button.styleSheet().endsWith("/0.png)}"));
    Mouse::Enter(&button);
    QVERIFY(button.styleSheet().endsWith("/1.png)}"));
}

void tst_picbutton::ignoresStatesWithoutPicture()
{
    for (const auto& [pictures, state] :
         {std::pair(3, 0), {0, 0}, {4, 4}, {8, -1}, {8, INT_MIN}, {8, 8}, {9, 8}}) {
        QStringList images;
        for (int i = 0; i < pictures; ++i)
            images.append(QString("%1/Resources/buttons/%2.png").arg(m_pInstallation->Root()).arg(i % 8));
        CVideoPicButton button;
        button.SetImages(images);
        const int before = ShownState(button);
        QCOMPARE(before, pictures < 4 ? -1 : 0);
        button.SetFontColors({"red"});
        button.ShowState(state);
        QCOMPARE(ShownState(button), before);
        QCOMPARE(button.styleSheet(), QString());
    }
}

void tst_picbutton::livesWithoutFiles()
{
    m_pInstallation->Write("Resources/buttons/Broken.Conf",
                           "[Bar]\nNormal=broken.png\nHover=../..\nClick=\n");
    m_pInstallation->Write("Resources/buttons/broken.png", "\x89PNG\r\n\x1a\n");
    for (const char* file : {"None.Conf", "Broken.Conf", "../buttons", ""}) {
        CVideoPicButton button;
        button.setCheckable(true);
        const QPalette before = button.palette();
        button.LoadPictures("Bar", false, file);
        for (const QChar deed : QString("EPRSL-+"))
            Do(button, deed);
        QVERIFY(button.isChecked());
        QVERIFY(button.palette() == before);
        QVERIFY(!button.autoFillBackground());
    }
}

void tst_picbutton::fitsPictureToSize()
{
    CVideoPicButton button;
    button.setAutoRaise(true);
    button.LoadPictures("Bar", false, "Pic.Conf");
    button.show();
    for (const QSize& size : {QSize(33, 17), QSize(0, 0), QSize(0, 12), QSize(8, 300)}) {
        button.resize(size);
        QCOMPARE(button.size(), size);
        if (size.isEmpty())
            continue;
        QCOMPARE(button.palette().brush(button.backgroundRole()).textureImage().size(), size);
        QCOMPARE(button.grab().toImage().pixelColor(size.width() / 2, 6), ColorOf(0));
    }
}

QTEST_MAIN(tst_picbutton)

#include "tst_picbutton.moc"
