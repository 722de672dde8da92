// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/xml_element.h"

namespace OXA {

QStringView XmlTree::view(const XmlText& part) const
{
    if (part.decoded >= 0)
        return decoded.at(part.decoded);
    return QStringView(text).mid(part.start, part.length);
}

XmlDocument::XmlDocument(std::shared_ptr<const XmlTree> tree)
    : m_tree(std::move(tree))
{
}

XmlElement XmlDocument::documentElement() const
{
    return m_tree ? XmlElement(m_tree.get(), 0) : XmlElement();
}

XmlElement::XmlElement(const XmlTree* tree, int index)
    : m_tree(tree)
    , m_index(index)
{
}

QString XmlElement::tagName() const
{
    return m_tree ? m_tree->view(node().name).toString() : QString();
}

XmlElement XmlElement::parent() const
{
    return m_tree && node().parent >= 0 ? XmlElement(m_tree, node().parent) : XmlElement();
}

XmlElement XmlElement::named(int index, int end, const char* tag) const
{
    for (; index < end; index = m_tree->nodes[size_t(index)].end) {
        if (!tag || m_tree->view(m_tree->nodes[size_t(index)].name) == QLatin1String(tag))
            return {m_tree, index};
    }
    return {};
}

XmlElement XmlElement::firstChildElement(const char* tag) const
{
    return m_tree ? named(m_index + 1, node().end, tag) : XmlElement();
}

XmlElement XmlElement::nextSiblingElement(const char* tag) const
{
    if (!m_tree || node().parent < 0)
        return {};
    return named(node().end, m_tree->nodes[size_t(node().parent)].end, tag);
}

const XmlAttribute* XmlElement::find(const char* name) const
{
    if (!m_tree)
        return nullptr;
    for (int i = node().firstAttribute + node().attributeCount; --i >= node().firstAttribute;) {
        const XmlAttribute& attribute = m_tree->attributes[size_t(i)];
        if (m_tree->view(attribute.name) == QLatin1String(name))
            return &attribute;
    }
    return nullptr;
}

bool XmlElement::hasAttribute(const char* name) const { return find(name); }

QString XmlElement::attribute(const char* name, const QString& absent) const
{
    const XmlAttribute* attribute = find(name);
    return attribute ? m_tree->view(attribute->value).toString() : absent;
}

QString XmlElement::text() const
{
    QString text;
    for (int i = m_tree ? node().firstText : 0; m_tree && i < node().endText; ++i)
        text += m_tree->view(m_tree->texts[size_t(i)]).toString();
    return text;
}

int XmlElement::lineNumber() const { return m_tree ? node().line : -1; }

int XmlElement::columnNumber() const { return m_tree ? node().column : -1; }

}
