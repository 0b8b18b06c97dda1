#pragma once

#include "SkinTokens.h"

#include <QHash>
#include <QStringList>

/// Makes a style sheet from its source. A source is a sheet with these additions, each on a line of its own:
/// "@include file" puts in another source; "@define name a b" up to "@end" defines a block with the
/// parameters $a and $b; "@name first | second" puts the block in. Anywhere else "@token" stands for the
/// token's value.
class SheetWriter
{
public:
    SheetWriter(const QString& source, const SkinTokens& tokens) : m_strSource(source), m_tokens(tokens) {}

    /// The finished text of a source file; ends the program with a message if it can't be made.
    QString Sheet(const QString& file);

private:
    struct Block
    {
        QStringList parameters;
        QStringList lines;
    };

    QStringList Expanded(const QString& file);
    QStringList Line(const QString& line);
    QStringList Used(const Block& block, const QString& arguments) const;
    QString WithTokens(QString text) const;

    QString m_strSource;
    const SkinTokens& m_tokens;
    QHash<QString, Block> m_mapBlocks;
};
