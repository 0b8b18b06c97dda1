#include "onvif/SoapNode.h"

#include "common/OneLine.h"

#include <QXmlStreamReader>

namespace {

constexpr int MostLevels = 32;
constexpr int MostElements = 20'000;
constexpr int LongestLine = 256;

SoapNode startedNode(const QXmlStreamReader& reader)
{
    SoapNode node(reader.name().toString());
    node.nameSpace = reader.namespaceUri().toString();
    for (const QXmlStreamAttribute& attribute : reader.attributes())
        node.attributes.append({attribute.name().toString(), attribute.value().toString()});
    return node;
}

} // namespace

std::optional<SoapNode> SoapNode::parse(const QByteArray& document)
{
    QXmlStreamReader reader(document);
    std::vector<SoapNode> open(1);
    int elements = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::DTD || open.size() > MostLevels || elements > MostElements)
            return {};
        if (token == QXmlStreamReader::StartElement) {
            ++elements;
            open.push_back(startedNode(reader));
        } else if (token == QXmlStreamReader::Characters) {
            open.back().text += reader.text();
        } else if (token == QXmlStreamReader::EndElement) {
            SoapNode node = std::move(open.back());
            open.pop_back();
            node.text = node.text.trimmed();
            open.back().children.push_back(std::move(node));
        }
    }
    if (reader.hasError() || open.front().children.empty())
        return {};
    return std::move(open.front().children.front());
}

const SoapNode& SoapNode::at(const QString& path) const
{
    static const SoapNode nothing;
    const SoapNode* node = this;
    for (const QString& step : path.split('/')) {
        const auto found = std::find_if(node->children.begin(), node->children.end(),
                                        [&](const SoapNode& child) { return child.name == step; });
        if (found == node->children.end())
            return nothing;
        node = &*found;
    }
    return *node;
}

QString SoapNode::attribute(const QString& name) const
{
    for (const auto& [key, value] : attributes) {
        if (key == name)
            return value;
    }
    return {};
}

QString SoapNode::line() const
{
    return oneLine(text.left(LongestLine)).trimmed();
}

SoapNode& SoapNode::add(const SoapNode& child)
{
    children.push_back(child);
    return *this;
}

SoapNode& SoapNode::set(const QString& attribute, const QString& value)
{
    attributes.append({attribute, value});
    return *this;
}
