// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/xml_parser.h"

#include "oxautils/config/xml_document.h"

namespace OXA {

namespace {

constexpr size_t kDeepestLevel = 64; // real files have 6

bool isSpace(QChar c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool beginsName(QChar c)
{
    return c == '_' || c == ':' || c.isLetter() || c.category() == QChar::Number_Letter;
}

bool continuesName(QChar c)
{
    return beginsName(c) || c == '-' || c == '.' || c.isNumber() || c.isMark();
}

QChar entityCharacter(QStringView name)
{
    static constexpr struct {
        const char* name;
        char character;
    } kEntities[] = {
        {"amp",  '&' },
        {"lt",   '<' },
        {"gt",   '>' },
        {"quot", '"' },
        {"apos", '\''}
    };
    for (const auto& entity : kEntities) {
        if (name == QLatin1String(entity.name))
            return QLatin1Char(entity.character);
    }
    return {};
}

/// Reads a document from front to end, without recursion. `m_at` is the character that was not
/// read yet, and the place of an error.
class Parser {
public:
    Parser(const QString& text, XmlError& error)
        : m_tree(std::make_shared<XmlTree>())
        , m_text(text)
        , m_error(error)
    {
        m_tree->text = text;
    }

    std::shared_ptr<const XmlTree> parse()
    {
        if (!parseDeclaration() || !parseBeforeRoot() || !parseElements() || !parseAfterRoot())
            return nullptr;
        return m_tree;
    }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    QChar current() const { return m_text.at(m_at); }
    bool is(char c) const { return !atEnd() && current() == QLatin1Char(c); }

    bool take(char c)
    {
        const bool found = is(c);
        m_at += found;
        return found;
    }

    bool takeSpace()
    {
        const int start = m_at;
        while (!atEnd() && isSpace(current()))
            ++m_at;
        return m_at > start;
    }

    /// An error here; at the end of the text that is the error.
    bool fail(const char* message)
    {
        return failAt(m_at, atEnd() ? "unexpected end of file" : message);
    }

    bool failAt(int at, const char* message)
    {
        const Place place = placeOf(at);
        m_error = {message, place.line, place.column};
        return false;
    }

    bool takeName(XmlText& name, const char* message)
    {
        name.start = m_at;
        if (atEnd() || !beginsName(current()))
            return fail(message);
        while (!atEnd() && continuesName(current()))
            ++m_at;
        name.length = m_at - name.start;
        return !atEnd() || fail(message);
    }

    bool takeQuote(QChar& quote)
    {
        if (!is('"') && !is('\''))
            return fail(kUnexpected);
        quote = m_text.at(m_at++);
        return true;
    }

    bool skipQuoted()
    {
        QChar quote;
        if (!takeQuote(quote))
            return false;
        while (!atEnd() && current() != quote)
            ++m_at;
        if (atEnd())
            return fail(kUnexpected);
        ++m_at;
        return true;
    }

    /// Moves behind `what`.
    bool skipTo(const char* what)
    {
        const int found = int(m_text.indexOf(QLatin1String(what), m_at));
        m_at = found < 0 ? int(m_text.size()) : found + int(qstrlen(what));
        return found >= 0 || fail(kUnexpected);
    }

    // <?xml version="1.0" encoding="UTF-8" standalone="yes"?>

    bool parseDeclaration()
    {
        if (!m_text.startsWith(QLatin1String("<?xml"))
            || (m_text.size() > 5 && continuesName(m_text.at(5))))
            return true;
        m_at = 5;
        if (!takeSpace())
            return fail(kUnexpected);
        QStringView name;
        QStringView value;
        if (!takeSetting(name, value))
            return false;
        if (name != QLatin1String("version"))
            return failAt(m_at, "version expected while reading the XML declaration");
        bool spaced = takeSpace();
        bool mayBeEncoding = true;
        const char* expected = "encoding declaration or standalone declaration expected while "
                               "reading the XML declaration";
        while (spaced && !is('?')) {
            if (!takeSetting(name, value))
                return false;
            if (name == QLatin1String("encoding") && mayBeEncoding) {
                mayBeEncoding = false;
                expected = "standalone declaration expected while reading the XML declaration";
                spaced = takeSpace();
                continue;
            }
            if (name != QLatin1String("standalone"))
                return failAt(m_at, expected);
            if (value != QLatin1String("yes") && value != QLatin1String("no"))
                return failAt(m_at, "wrong value for standalone declaration");
            takeSpace();
            break;
        }
        return (take('?') && take('>')) || fail(kUnexpected);
    }

    bool takeSetting(QStringView& name, QStringView& value)
    {
        XmlAttribute setting;
        if (!takeAttribute(setting, kUnexpected))
            return false;
        name = m_tree->view(setting.name);
        value = m_tree->view(setting.value);
        return true;
    }

    // What may stand outside of the root

    bool parseBeforeRoot()
    {
        while (true) {
            takeSpace();
            if (!take('<'))
                return fail(kElement);
            if (is('?')) {
                if (!parseInstruction())
                    return false;
            } else if (!is('!')) {
                return true;
            } else if (m_text.mid(m_at, 2) == QLatin1String("!D")) {
                if (!parseDocumentType())
                    return false;
            } else if (++m_at, !is('-')) {
                return fail(kElement);
            } else if (!parseComment()) {
                return false;
            }
        }
    }

    bool parseAfterRoot()
    {
        while (takeSpace(), !atEnd()) {
            if (!take('<') || (!is('?') && !is('!')))
                return fail(kUnexpected);
            if (is('?')) {
                if (!parseInstruction())
                    return false;
            } else if (++m_at, !atEnd() && (isSpace(current()) || is('!') || is('<') || is('?'))) {
                return fail(kUnexpected);
            } else if (!parseComment()) {
                return false;
            }
        }
        return true;
    }

    bool parseInstruction()
    {
        ++m_at; // the ?
        XmlText name;
        if (!takeName(name, kUnexpected))
            return false;
        if (m_tree->view(name).compare(QLatin1String("xml"), Qt::CaseInsensitive) == 0)
            return fail("invalid name for processing instruction");
        if (!isSpace(current()) && !is('?'))
            return fail(kUnexpected);
        return skipTo("?>");
    }

    bool parseComment()
    {
        constexpr char kComment[] = "error occurred while parsing comment";
        if (!take('-') || !take('-'))
            return fail(kComment);
        return skipTo("--") && (take('>') || fail(kComment));
    }

    bool parseDocumentType()
    {
        constexpr char kType[] = "error occurred while parsing document type definition";
        const int start = m_at - 1;
        if (tagContains('['))
            return failAt(start, "declarations in the document type are not accepted");
        ++m_at; // the !
        if (!takeWord("DOCTYPE"))
            return false;
        XmlText name;
        if (!takeSpace() || is('%') || is('>') || is(']'))
            return fail(kType);
        if (!takeName(name, "letter is expected"))
            return false;
        if (takeSpace() && (is('S') || is('P')) && !parseExternalId())
            return false;
        takeSpace();
        return take('>') || fail(kType);
    }

    bool parseExternalId()
    {
        const bool isPublic = is('P');
        if (!takeWord(isPublic ? "PUBLIC" : "SYSTEM") || !takeGap() || !skipQuoted())
            return false;
        return !isPublic || (takeGap() && skipQuoted());
    }

    bool takeGap() { return takeSpace() || fail(kUnexpected); }

    bool takeWord(const char* word)
    {
        for (; *word; ++word) {
            if (!take(*word))
                return fail(kUnexpected);
        }
        return true;
    }

    /// Whether the tag that begins here contains `c`, up to a ">" that is in no quotes.
    bool tagContains(char c) const
    {
        QChar quote;
        for (int i = m_at; i < m_text.size(); ++i) {
            const QChar here = m_text.at(i);
            if (here == QLatin1Char(c))
                return true;
            if (quote.isNull() && here == '>')
                return false;
            if (here == quote)
                quote = QChar();
            else if (quote.isNull() && (here == '"' || here == '\''))
                quote = here;
        }
        return false;
    }

    // The root and what is in it

    bool parseElements()
    {
        if (!parseStartTag())
            return false;
        while (!m_open.empty()) {
            if (!parseText())
                return false;
            if (++m_at; is('-') || is('<') || is('&') || is('>') || is(']'))
                return fail(kContent);
            m_startTag = false;
            const bool ok = is('/') ? parseEndTag()
                : is('?')           ? parseInstruction()
                : is('!')           ? parseDeclarationInside()
                                    : parseStartTag();
            if (!ok)
                return false;
        }
        return true;
    }

    bool parseDeclarationInside()
    {
        ++m_at;
        if (is('-'))
            return parseComment();
        if (!take('['))
            return fail(kContent);
        if (!takeWord("CDATA["))
            return false;
        const int start = m_at;
        if (!skipTo("]]>"))
            return false;
        m_startTag = true;
        if (m_at - 3 > start)
            m_tree->texts.push_back({start, m_at - 3 - start});
        return true;
    }

    bool parseStartTag()
    {
        if (m_open.size() == kDeepestLevel && !atEnd())
            return failAt(m_at - 1, "elements are nested deeper than 64 levels");
        XmlNode node;
        node.parent = m_open.empty() ? -1 : m_open.back();
        node.firstAttribute = int(m_tree->attributes.size());
        node.firstText = int(m_tree->texts.size());
        if (!takeName(node.name, kElement))
            return false;
        while (takeSpace(), !is('/') && !is('>')) {
            XmlAttribute attribute;
            if (!takeAttribute(attribute, kElement))
                return false;
            m_tree->attributes.push_back(attribute);
        }
        node.attributeCount = int(m_tree->attributes.size()) - node.firstAttribute;
        const Place place = placeOf(m_at);
        node.line = place.line;
        node.column = place.column;
        m_open.push_back(int(m_tree->nodes.size()));
        m_tree->nodes.push_back(node);
        m_startTag = !is('/');
        if (m_startTag)
            return take('>');
        ++m_at;
        if (!take('>'))
            return fail(kElement);
        close();
        return true;
    }

    bool takeAttribute(XmlAttribute& attribute, const char* message)
    {
        if (!takeName(attribute.name, message))
            return false;
        takeSpace();
        if (!take('='))
            return fail(kUnexpected);
        takeSpace();
        QChar quote;
        if (!takeQuote(quote))
            return false;
        const int start = m_at;
        QString decoded;
        int raw = start; // from here on, nothing is in `decoded`
        for (; !atEnd() && current() != quote; ++m_at) {
            if (is('<'))
                return fail(kUnexpected);
            if (!is('&'))
                continue;
            bool known = false;
            if (!parseReference(decoded, raw, known))
                return false;
            --m_at;
        }
        if (atEnd())
            return fail(kUnexpected);
        attribute.value = part(start, raw, m_at, decoded);
        ++m_at;
        return true;
    }

    /// The text from `start` to `end`: `decoded`, and from `raw` on as it is.
    XmlText part(int start, int raw, int end, QString& decoded)
    {
        if (raw == start)
            return {start, end - start};
        decoded += m_text.mid(raw, end - raw).toString();
        m_tree->decoded += decoded;
        return {start, end - start, int(m_tree->decoded.size()) - 1};
    }

    /// Up to the next "<". A reference to an unknown entity ends one text, and begins another.
    bool parseText()
    {
        int start = m_at;
        int raw = m_at;
        int brackets = m_startTag ? 0 : -1;
        QString decoded;
        for (; !atEnd() && !is('<'); ++m_at) {
            if (is('&')) {
                const int reference = m_at;
                bool known = false;
                if (!parseReference(decoded, raw, known))
                    return false;
                if (!known) {
                    addText(start, reference, reference, decoded);
                    decoded.clear();
                    start = raw;
                }
                --m_at;
                brackets = -1;
            } else if (is(']')) {
                ++brackets;
            } else if (brackets >= 2 && is('>')) {
                return fail(kContent);
            } else {
                brackets = 0;
            }
        }
        if (atEnd())
            return fail(kUnexpected);
        addText(start, raw, m_at, decoded);
        return true;
    }

    void addText(int start, int raw, int end, QString& decoded)
    {
        const QStringView here = m_text.mid(raw, end - raw);
        if (!here.trimmed().isEmpty() || !decoded.trimmed().isEmpty())
            m_tree->texts.push_back(part(start, raw, end, decoded));
    }

    bool parseEndTag()
    {
        ++m_at; // the /
        XmlText name;
        if (!takeName(name, kElement))
            return false;
        if (m_tree->view(m_tree->nodes[size_t(m_open.back())].name) != m_tree->view(name))
            return fail("tag mismatch");
        takeSpace();
        if (!take('>'))
            return fail(kElement);
        close();
        return true;
    }

    void close()
    {
        XmlNode& node = m_tree->nodes[size_t(m_open.back())];
        node.end = int(m_tree->nodes.size());
        node.endText = int(m_tree->texts.size());
        m_open.pop_back();
    }

    /// "&name;", "&#65;" or "&#x41;": adds the text from `raw` on to `text`, and the character
    /// unless the name is not `known`. `raw` is behind the reference then.
    bool parseReference(QString& text, int& raw, bool& known)
    {
        constexpr char kReference[] = "error occurred while parsing reference";
        text += m_text.mid(raw, m_at - raw).toString();
        ++m_at; // the &
        if (take('#')) {
            const int base = take('x') ? 16 : 10;
            const int start = m_at;
            while (!atEnd() && isDigit(current(), base))
                ++m_at;
            bool ok = false;
            const uint code = m_text.mid(start, m_at - start).toString().toUInt(&ok, base);
            if (!is(';') || !ok)
                return fail(kReference);
            text += QChar(ushort(code)); // what does not fit one UTF-16 unit is cut
            known = true;
        } else {
            XmlText name;
            if (is(';') || is('&'))
                return fail(kReference);
            if (!takeName(name, "letter is expected"))
                return false;
            if (!is(';'))
                return fail(kReference);
            const QChar character = entityCharacter(m_tree->view(name));
            known = !character.isNull();
            if (known)
                text += character;
        }
        raw = ++m_at;
        return true;
    }

    static bool isDigit(QChar c, int base)
    {
        const ushort unit = c.unicode();
        return (unit >= '0' && unit <= '9')
            || (base == 16 && ((unit >= 'a' && unit <= 'f') || (unit >= 'A' && unit <= 'F')));
    }

    struct Place {
        int line = 1;
        int column = 1;
        int at = 0;
        int lineStart = 0;
    };

    /// Places are asked for in the order of the text, so each line end is counted once.
    Place placeOf(int at)
    {
        for (; m_placed.at < at; ++m_placed.at) {
            const QChar c = m_text.at(m_placed.at);
            const bool alone
                = m_placed.at + 1 == m_text.size() || m_text.at(m_placed.at + 1) != '\n';
            if (c == '\n' || (c == '\r' && alone)) {
                ++m_placed.line;
                m_placed.lineStart = m_placed.at + 1;
            }
        }
        m_placed.column = at - m_placed.lineStart + 1;
        return m_placed;
    }

    static constexpr char kUnexpected[] = "unexpected character";
    static constexpr char kContent[] = "error occurred while parsing content";
    static constexpr char kElement[] = "error occurred while parsing element";

    std::shared_ptr<XmlTree> m_tree;
    const QStringView m_text;
    XmlError& m_error;
    int m_at = 0;
    bool m_startTag = false; // the last markup was a start tag
    std::vector<int> m_open; // indices of the elements without an end tag yet
    Place m_placed;
};

}

std::shared_ptr<const XmlTree> parseXmlText(const QString& text, XmlError& error)
{
    return Parser(text, error).parse();
}

}
