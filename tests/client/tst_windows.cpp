#include "alarms/AlarmCenter.h"
#include "cameras/ClientArchive.h"
#include "common/ClientOptions.h"
#include "common/Words.h"
#include "help/AboutWindow.h"
#include "help/KeysWindow.h"
#include "manager/CameraDialog.h"
#include "manager/CameraEdits.h"
#include "manager/FindCamerasDialog.h"
#include "manager/ManagerDialog.h"
#include "manager/SeveralDialog.h"
#include "manager/WelcomePage.h"
#include "panes/PaneKeys.h"
#include "settings/SettingsDialog.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "views/ViewDialog.h"
#include "window/MainWindow.h"

#include <CPaneDeck.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTemporaryDir>

#include <functional>

namespace {

const QString Mark = "‹";
const QSize Smallest(800, 600);

QString content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString languageFile(const QString& language)
{
    return QFINDTESTDATA("../../languages/" + language + ".ini");
}

/// A language whose every word is marked, beside what is the same in all of them.
QString pseudoLanguage(const QString& directory)
{
    QString text;
    const QStringList lines = content(languageFile("German")).split('\n');
    for (const QString& line : lines) {
        const QString key = line.section('=', 0, 0);
        text += line.contains('=') ? key + "=" + Mark + key + "›\n" : line + "\n";
    }
    QFile file(directory + "/Pseudo.ini");
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
    return file.fileName();
}

/// Names and numbers, which are the same in every language: those of cameras and files, units, keys.
bool isName(QString text)
{
    static const QRegularExpression name(
        "^(Camera \\d+|PaneDeck|Tester|\\(\\d+\\) PaneDeck|.*\\.(ini|mkv)|/.*|[A-Z]|[A-Z], "
        "[A-Z]|PTZ|ONVIF|GB|URL|CSV|"
        "UDP|TCP|HTTP|RTSP|RTSP.*|MKV|MP4|[\\d.]+X|.*://.*|English|中文|Español|Deutsch|Français|العربية|"
        "(Ctrl|Shift|Alt|Meta|F)\\+?.*|Ins|Del|Esc|[a-z0-9.]+\\.[a-z.]+|.*(GPL|zlib|Apache|BSD|public domain|"
        "Bitstream|SIL).*|Qt.*|TinyXML|Highway|FFmpeg|SDL|KDSoap|QtKeychain|SQLite|PostgreSQL|DejaVu|Noto "
        "CJK|"
        "\\d+[:.x/ -].*|qt_.*)$");
    text.remove('&');
    return !text.contains(QRegularExpression("[A-Za-z]{2}")) || name.match(text.trimmed()).hasMatch();
}

using Texts = QVector<QPair<QString, QString>>; ///< where, and what

void addModel(const QAbstractItemView& view, Texts& texts)
{
    const QAbstractItemModel* model = view.model();
    for (int column = 0; model && column < model->columnCount(); ++column)
        texts.append(
            {"header of " + view.objectName(), model->headerData(column, Qt::Horizontal).toString()});
}

/// All that a widget shows or tells; not what a user has typed or named.
void addTexts(const QWidget& widget, Texts& texts)
{
    const QString where = QString("%1 %2").arg(widget.metaObject()->className(), widget.objectName());
    texts.append({where, widget.toolTip()});
    texts.append({where, widget.accessibleName()});
    if (widget.isWindow())
        texts.append({where, widget.windowTitle()});
    if (auto* label = qobject_cast<const QLabel*>(&widget))
        texts.append({where, label->text()});
    if (auto* button = qobject_cast<const QAbstractButton*>(&widget))
        texts.append({where, button->text()});
    if (auto* group = qobject_cast<const QGroupBox*>(&widget))
        texts.append({where, group->title()});
    if (auto* edit = qobject_cast<const QLineEdit*>(&widget))
        texts.append({where, edit->placeholderText()});
    if (auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        for (int i = 0; i < bar->count(); ++i)
            texts.append({where, bar->tabText(i)});
    }
    if (auto* box = qobject_cast<const QComboBox*>(&widget)) {
        for (int i = 0; i < box->count(); ++i)
            texts.append({where, box->itemText(i)});
    }
    if (auto* view = qobject_cast<const QAbstractItemView*>(&widget))
        addModel(*view, texts);
    for (const QAction* action : widget.actions())
        texts.append({where + " action", action->text()});
}

/// Qt's own parts have their words from Qt, and a button that never shows has none.
bool isQts(const QWidget& widget)
{
    const QString name = widget.objectName();
    if (name.startsWith("qt_") || name.startsWith("Scroll") || name == "m_btnFreezePlay")
        return true;
    for (const QWidget* above = widget.parentWidget(); above; above = above->parentWidget()) {
        if (above->inherits("QDialogButtonBox") || above->inherits("QCalendarWidget"))
            return true;
    }
    return false;
}

QStringList unmarked(const QWidget& top)
{
    QList<QWidget*> widgets = top.findChildren<QWidget*>();
    Texts texts;
    addTexts(top, texts);
    for (const QWidget* widget : widgets) {
        if (!isQts(*widget))
            addTexts(*widget, texts);
    }
    QStringList found;
    for (const auto& text : texts) {
        if (!text.second.contains(Mark) && !isName(text.second))
            found.append(text.first + ": " + text.second);
    }
    found.removeDuplicates();
    return found;
}

/// What shows less than its text, or lies outside of what holds it.
QStringList cut(const QWidget& top)
{
    QStringList found;
    for (const QWidget* widget : top.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const QString text = label ? label->text() : button ? button->text() : QString();
        if (text.isEmpty() || !widget->isVisibleTo(&top) || (label && label->wordWrap()))
            continue;
        if (widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored ||
            widget->inherits("TroubleLabel"))
            continue;
        const int least = widget->fontMetrics().horizontalAdvance(QString(text).remove('&'));
        const QRect holder = widget->parentWidget()->rect();
        if (widget->width() < least || !holder.intersects(widget->geometry()) ||
            widget->geometry().right() > holder.right() + 1 || widget->geometry().left() < -1)
            found.append(QString("%1 \"%2\" has %3 of %4")
                             .arg(widget->objectName(), text)
                             .arg(widget->width())
                             .arg(least));
    }
    return found;
}

} // namespace

/// All windows of the client: that each word has a translation, and that all has its room.
class tst_windows : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyTextIsAWordOfTheLanguage();
    void fitsASmallScreen_data();
    void fitsASmallScreen();
    void cleanupTestCase();

private:
    void setLanguage(const QString& path);
    void visit(const std::function<void(QWidget&)>& look);
    void visitDialogs(MainWindow& window, const std::function<void(QWidget&)>& look);

    QTemporaryDir m_directory;
};

void tst_windows::init()
{
    DeckTestCase::init();
    QVERIFY(m_directory.isValid());
}

void tst_windows::setLanguage(const QString& path)
{
    loadWords(path);
    CPaneDeck::ChangeLook(0, path);
    QApplication::setLayoutDirection(path.contains("Arabic") ? Qt::RightToLeft : Qt::LeftToRight);
}

/// The main window with each tab in front, then every dialog.
void tst_windows::visit(const std::function<void(QWidget&)>& look)
{
    const ExpectedWarning sheet("Specified color without alpha value but alpha given");
    const ExpectedWarning picture("Could not create pixmap from");
    ClientOptions options;
    options.isSynthetic = true;
    options.archiveDir = m_directory.path() + "/archive";
    MainWindow window(options);
    window.resize(Smallest);
    window.show();
    auto* tabs = window.findChild<QTabBar*>("Tabs");
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        QCoreApplication::processEvents();
        look(window);
    }
    visitDialogs(window, look);
}

void tst_windows::visitDialogs(MainWindow& window, const std::function<void(QWidget&)>& look)
{
    KeysWindow keys(nullptr);
    keys.addKeys(word("Menus"), PaneKeys::help());
    keys.addKeys(word("Playback"), KeysWindow::playback());
    AboutWindow about(nullptr);
    SettingsDialog settings({}, window.cameras(), {}, "/usual", "/usual", nullptr);
    CameraList cameras;
    CameraDescription camera;
    camera.name = "Tester";
    CameraDialog cameraDialog(&cameras, camera, nullptr);
    CameraEdits edits(&cameras, nullptr);
    ManagerDialog manager(&cameras, &edits, nullptr);
    SeveralDialog several(&cameras, nullptr);
    FindCamerasDialog find(&cameras, nullptr);
    ViewDialog views(window.views(), window.live());
    QAction first(word("&Cameras"));
    QAction second(word("&Cameras"));
    WelcomePage welcome(&first, &second);
    for (QWidget* dialog : QList<QWidget*>{&keys, &about, &settings, &cameraDialog, &manager, &several, &find,
                                           &views, &welcome}) {
        dialog->setAttribute(Qt::WA_DeleteOnClose, false);
        dialog->show();
        for (auto* bar : dialog->findChildren<QTabBar*>()) {
            for (int i = 0; i < bar->count(); ++i) {
                bar->setCurrentIndex(i);
                QCoreApplication::processEvents();
                look(*dialog);
            }
        }
        look(*dialog);
        dialog->hide();
    }
}

void tst_windows::everyTextIsAWordOfTheLanguage()
{
    setLanguage(pseudoLanguage(m_directory.path()));
    QCOMPARE(word("Settings"), Mark + "Settings›");
    QStringList found;
    visit([&found](QWidget& top) { found += unmarked(top); });
    found.removeDuplicates();
    QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
}

void tst_windows::fitsASmallScreen_data()
{
    QTest::addColumn<QString>("language");
    for (const char* language : {"English", "German", "Chinese", "Arabic"})
        QTest::newRow(language) << language;
}

void tst_windows::fitsASmallScreen()
{
    QFETCH(QString, language);
    setLanguage(languageFile(language));
    QStringList found;
    visit([&found](QWidget& top) {
        const QSize least = top.minimumSizeHint();
        if (least.width() > Smallest.width() || least.height() > Smallest.height())
            found.append(QString("%1 wants %2 x %3")
                             .arg(top.objectName() + top.windowTitle())
                             .arg(least.width())
                             .arg(least.height()));
        found += cut(top);
    });
    found.removeDuplicates();
    QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
}

void tst_windows::cleanupTestCase()
{
    constexpr int PatienceMs = 5000;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(waitForSourceThreads(PatienceMs));
}

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("PaneDeck");
    QCoreApplication::setApplicationName("tst_windows");
    return RunTests<tst_windows>(argc, argv);
}

#include "tst_windows.moc"
