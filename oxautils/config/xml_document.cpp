#include "oxautils/config/xml_document.h"

#include "files/fail.h"
#include "files/file_stat.h"
#include "oxautils/config/parse_once.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QXmlInputSource>

namespace OXA {

namespace {

constexpr int kDeepestLevel = 64; // real files have 6
constexpr int kLargestKept = 1 << 20; // bytes of a file

/// The last file that was parsed. Its mode, checks and cores are read within a short time; large
/// files are kept only during a `ParseOnce`.
struct LastParsed {
    QByteArray content;
    QDomDocument document;
    int keepers = 0;

    void keep(const QByteArray& newContent, const QDomDocument& newDocument)
    {
        if (keepers == 0 && newContent.size() > kLargestKept)
            return;
        content = newContent;
        document = newDocument;
    }

    void release()
    {
        if (--keepers > 0 || content.size() <= kLargestKept)
            return;
        content.clear();
        document = {};
    }
};

thread_local LastParsed lastParsed;

/// The last file that was read during a `ParseOnce`.
struct LastRead {
    QString path;
    struct stat state { };
    QByteArray content;

    bool holds(const QString& asked, const struct stat& now) const
    {
        const auto same = [](const timespec& a, const timespec& b) {
            return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
        };
        return asked == path && OXA_FILES::isSame(now, state) && now.st_size == state.st_size
            && same(now.st_mtim, state.st_mtim) && same(now.st_ctim, state.st_ctim);
    }
};

thread_local LastRead lastRead;

/// Scans the markup of a document without building a tree, so that nesting needs no stack.
/// Malformed markup is left to the parser.
class NestingScanner {
public:
    explicit NestingScanner(const QString& text)
        : m_text(text)
    {
    }

    /// False, with the place in `error`, when the document must not be parsed.
    bool accepts(XmlError& error)
    {
        while ((m_at = m_text.indexOf('<', m_at)) >= 0) {
            const int start = m_at;
            const char* complaint = takeMarkup();
            if (!complaint)
                continue;
            error = {complaint, lineOf(start), columnOf(start)};
            return false;
        }
        return true;
    }

private:
    bool startsWith(const char* what) const
    {
        const QLatin1String text(what);
        return m_text.midRef(m_at, text.size()) == text;
    }

    /// Moves after the next `what` that shares no character with the `opening` here: "<!-->" only
    /// begins a comment.
    void skipBehind(const char* opening, const char* what)
    {
        const QLatin1String text(what);
        const int found = m_text.indexOf(text, m_at + QLatin1String(opening).size());
        m_at = found < 0 ? m_text.size() : found + text.size();
    }

    /// Moves after the ">" of a tag, skipping those in quoted values; returns the tag's text.
    QStringRef takeTag()
    {
        const int start = m_at;
        QChar quote;
        while (++m_at < m_text.size()) {
            const QChar c = m_text.at(m_at);
            if (quote.isNull() && c == '>')
                return m_text.midRef(start, m_at++ - start);
            if (c == quote)
                quote = QChar();
            else if (quote.isNull() && (c == '"' || c == '\''))
                quote = c;
        }
        return m_text.midRef(start);
    }

    /// Reads one piece of markup; returns null, or an error.
    const char* takeMarkup()
    {
        if (startsWith("<!--")) {
            skipBehind("<!--", "-->");
        } else if (startsWith("<![CDATA[")) {
            skipBehind("<![CDATA[", "]]>");
        } else if (startsWith("<?")) {
            skipBehind("<?", "?>");
        } else if (startsWith("<!")) {
            if (takeTag().contains('['))
                return "declarations in the document type are not accepted";
        } else if (startsWith("</")) {
            takeTag();
            m_level -= m_level > 0;
        } else if (m_level == kDeepestLevel) {
            return "elements are nested deeper than 64 levels";
        } else if (!takeTag().endsWith('/')) {
            ++m_level;
        }
        return nullptr;
    }

    int lineOf(int at) const { return m_text.leftRef(at).count('\n') + 1; }
    int columnOf(int at) const { return at - (at ? m_text.lastIndexOf('\n', at - 1) : -1); }

    const QString& m_text;
    int m_at = 0;
    int m_level = 0;
};

// Decoded as by the parser, so that both read the same text.
QString decoded(const QByteArray& content)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QXmlInputSource source;
    source.setData(content);
    return source.data();
    QT_WARNING_POP
}

bool endsInBareAmpersand(const QString& text, const XmlError& error)
{
    static const QRegularExpression unfinished("&[^<>&;]*$");
    const QString line = text.section('\n', error.line - 1, error.line - 1);
    return error.line > 0 && unfinished.match(line.left(error.column - 1)).hasMatch();
}

}

ParseOnce::ParseOnce() { ++lastParsed.keepers; }

ParseOnce::~ParseOnce()
{
    lastParsed.release();
    if (lastParsed.keepers == 0)
        lastRead = {};
}

QString XmlError::text() const
{
    return QString("%1 at %2:%3").arg(message, QString::number(line), QString::number(column));
}

QString XmlError::hint() const
{
    return bareAmpersand ? "Write &amp; for &, and so &amp;&amp; for &&." : kMalformedHint;
}

bool readFile(const QString& path, QByteArray& content, QString* error)
{
    const auto state = OXA_FILES::statOf(path);
    if (state && lastRead.holds(path, *state)) {
        content = lastRead.content;
        return true;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return fail(error, QFileInfo(path).isDir() ? "it is a directory" : file.errorString());
    content = file.readAll();
    if (state && S_ISREG(state->st_mode) && lastParsed.keepers > 0)
        lastRead = {path, *state, content};
    return true;
}

bool parseXml(const QByteArray& content, QDomDocument& document, XmlError* error)
{
    if (!content.isEmpty() && content == lastParsed.content) {
        document = lastParsed.document;
        return true;
    }
    const QString text = decoded(content);
    XmlError found;
    if (NestingScanner(text).accepts(found)
        && document.setContent(text, &found.message, &found.line, &found.column)) {
        lastParsed.keep(content, document);
        return true;
    }
    found.bareAmpersand = endsInBareAmpersand(text, found);
    if (error)
        *error = found;
    return false;
}

bool loadXml(const QString& path, QDomDocument& document)
{
    QByteArray content;
    return readFile(path, content) && parseXml(content, document);
}

}
