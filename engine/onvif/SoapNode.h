#pragma once

#include <QPair>
#include <QString>
#include <QVector>

#include <optional>
#include <vector>

/// An element of a SOAP message with all that is in it.
struct SoapNode
{
    SoapNode() = default;
    explicit SoapNode(const QString& name, const QString& text = {}) : name(name), text(text) {}

    QString name;
    QString nameSpace; ///< of an element to be sent; empty for that of the element around it
    QString text;
    QVector<QPair<QString, QString>> attributes;
    std::vector<SoapNode> children;

    /// Reads a document of an element in 32 levels and 20,000 elements at the most, whatever their
    /// namespaces. Nothing for one that is larger, malformed, or has a document type.
    static std::optional<SoapNode> parse(const QByteArray& document);

    /// The first element on a path such as "Time/Hour"; an empty one if there is none.
    const SoapNode& at(const QString& path) const;
    QString attribute(const QString& name) const;
    /// `text` as one line of at most 256 characters: what an operator may see.
    QString line() const;

    SoapNode& add(const SoapNode& child);
    SoapNode& set(const QString& attribute, const QString& value);
};
