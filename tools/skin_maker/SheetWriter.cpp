#include "SheetWriter.h"

#include "SkinFiles.h"

#include <QRegularExpression>

QString SheetWriter::Sheet(const QString& file)
{
    m_mapBlocks.clear();
    return WithTokens(Expanded(file).join('\n'));
}

QStringList SheetWriter::Expanded(const QString& file)
{
    QStringList result;
    QString open;
    for (const QString& line : ReadText(m_strSource + "/" + file).split('\n')) {
        if (line == "@end") {
            open.clear();
        } else if (!open.isEmpty()) {
            m_mapBlocks[open].lines.append(line);
        } else if (line.startsWith("@define ")) {
            QStringList words = line.split(' ', Qt::SkipEmptyParts).mid(1);
            open = words.takeFirst();
            m_mapBlocks[open].parameters = words;
        } else {
            result.append(Line(line));
        }
    }
    return result;
}

QStringList SheetWriter::Line(const QString& line)
{
    if (!line.startsWith('@'))
        return {line};
    const QString name = line.mid(1).section(' ', 0, 0);
    const QString arguments = line.section(' ', 1);
    if (name == "include")
        return Expanded(arguments.trimmed());
    if (!m_mapBlocks.contains(name))
        GiveUp("no block " + name);
    return Used(m_mapBlocks.value(name), arguments);
}

QStringList SheetWriter::Used(const Block& block, const QString& arguments) const
{
    const QStringList values = arguments.split('|');
    if (values.size() != block.parameters.size())
        GiveUp("wrong number of values: " + arguments);
    QString text = block.lines.join('\n');
    for (int i = 0; i < values.size(); ++i)
        text.replace("$" + block.parameters.at(i), values.at(i).trimmed());
    return text.split('\n');
}

QString SheetWriter::WithTokens(QString text) const
{
    static const QRegularExpression token("@([a-z-]+)");
    for (QRegularExpressionMatch match = token.match(text); match.hasMatch(); match = token.match(text))
        text.replace(match.capturedStart(), match.capturedLength(), m_tokens.Value(match.captured(1)));
    return text;
}
