// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_XML_ELEMENT_H
#define OXAUTILS_CONFIG_XML_ELEMENT_H

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace OXA {

class XmlElement;

/// A part of the parsed text, or of its decoded pieces when references were replaced in it.
struct XmlText {
    int start = 0;
    int length = 0;
    int decoded = -1; ///< index of the piece; -1: as in the text
};

struct XmlAttribute {
    XmlText name;
    XmlText value;
};

/// One element; its descendants follow it in the order of the document.
struct XmlNode {
    XmlText name;
    int parent = -1;
    int end = 0; ///< index of the node that follows its last descendant
    int firstAttribute = 0;
    int attributeCount = 0;
    int firstText = 0;
    int endText = 0; ///< texts of descendants included
    int line = 0; ///< of the last character of its start tag, before the ">"
    int column = 0;
};

/// Elements, attributes and texts in the order of the document; read through `XmlElement`.
struct XmlTree {
    QString text;
    QStringList decoded;
    std::vector<XmlNode> nodes;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlText> texts;

    QStringView view(const XmlText& part) const;
};

/// A parsed document; copies share it.
class XmlDocument {
public:
    XmlDocument() = default;
    explicit XmlDocument(std::shared_ptr<const XmlTree> tree);

    /// Valid as long as a copy of the document exists; null when nothing was parsed.
    XmlElement documentElement() const;

private:
    std::shared_ptr<const XmlTree> m_tree;
};

/// An element of a document, or null; all reads of a null element find nothing.
class XmlElement {
public:
    XmlElement() = default;
    XmlElement(const XmlTree* tree, int index);

    bool isNull() const { return !m_tree; }
    QString tagName() const;
    XmlElement parent() const; ///< null for the root

    /// The first child, or the first one named `tag`.
    XmlElement firstChildElement(const char* tag = nullptr) const;
    XmlElement nextSiblingElement(const char* tag = nullptr) const;

    bool hasAttribute(const char* name) const;
    /// The last one with the name counts.
    QString attribute(const char* name, const QString& absent = {}) const;

    /// The texts in the element and its descendants; what is only space between markup is left out.
    QString text() const;

    /// Where its start tag ends: at the "/" or ">"; from 1.
    int lineNumber() const;
    int columnNumber() const;

private:
    XmlElement named(int index, int end, const char* tag) const;
    const XmlAttribute* find(const char* name) const;
    const XmlNode& node() const { return m_tree->nodes[size_t(m_index)]; }

    const XmlTree* m_tree = nullptr;
    int m_index = -1;
};

}

#endif
