#include "WindowTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabBar>
#include <QVector>

namespace {

/// Names and numbers, which are the same in every language: those of cameras and files, units, keys.
bool isName(QString text)
{
    static const QRegularExpression name(
        "^(Camera \\d+|PaneDeck|Tester|\\(\\d+\\) PaneDeck|.*\\.(ini|mkv)|/.*|[A-Z]|[A-Z], "
        "[A-Z]|PTZ|ONVIF|GB|URL|CSV|"
        "UDP|TCP|HTTP|SHA-256[\\sA-F\\d]*|RTSP|RTSP.*|MKV|MP4|[\\d.]+X|.*://"
        ".*|English|中文|Español|Deutsch|Français|العربية|"
        "(Ctrl|Shift|Alt|Meta|F)\\+?.*|Ins|Del|Esc|[a-z0-9.]+\\.[a-z.]+|.*(GPL|zlib|Apache|BSD|public domain|"
        "Bitstream|SIL).*|Qt.*|TinyXML|Highway|FFmpeg|SDL|KDSoap|QtKeychain|SQLite|PostgreSQL|Matroska.*|"
        "DejaVu|Noto "
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

} // namespace

QStringList untranslated(const QWidget& top, const QString& mark)
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
        if (!text.second.contains(mark) && !isName(text.second))
            found.append(text.first + ": " + text.second);
    }
    found.removeDuplicates();
    return found;
}
