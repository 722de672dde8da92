// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/xml_document.h"

#include "files/fail.h"
#include "files/file_stat.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/xml_parser.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QStringDecoder>
#endif

namespace OXA {

namespace {

constexpr int kLargestKept = 1 << 20; // bytes of a file

/// The last file that was parsed. Its mode, checks and cores are read within a short time; large
/// files are kept only during a `ParseOnce`.
struct LastParsed {
    QByteArray content;
    XmlDocument document;
    int keepers = 0;

    void keep(const QByteArray& newContent, const XmlDocument& newDocument)
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

/// What is read in place of a file.
struct GivenText {
    QString path; // null: no file
    QByteArray content;
};

GivenText givenText;

/// The encoding that the XML declaration names; else empty.
QByteArray namedEncoding(const QByteArray& content)
{
    const int start = content.startsWith("\xef\xbb\xbf") ? 3 : 0;
    const int end = content.indexOf('>');
    const QByteArray head = content.mid(start, end - start);
    const int name = head.indexOf("encoding");
    if (end < 0 || !head.startsWith("<?xml") || name < 0)
        return {};
    int open = name;
    while (open < head.size() && head.at(open) != '"' && head.at(open) != '\'')
        ++open;
    const int close = open < head.size() ? head.indexOf(head.at(open), open + 1) : -1;
    return close < 0 ? QByteArray() : head.mid(open + 1, close - open - 1);
}

/// UTF-16 with a byte-order mark, else in the named encoding, else in UTF-8.
QString decoded(const QByteArray& content)
{
    const bool utf16 = content.startsWith("\xfe\xff") || content.startsWith("\xff\xfe");
    const QByteArray name = utf16 ? QByteArray("UTF-16") : namedEncoding(content);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    const QTextCodec* codec = QTextCodec::codecForName(name);
    QTextDecoder decoder(codec ? codec : QTextCodec::codecForName("UTF-8"));
    return decoder.toUnicode(content);
#else
    QStringDecoder decoder(name.constData());
    if (!decoder.isValid())
        decoder = QStringDecoder(QStringDecoder::Utf8);
    return decoder.decode(content);
#endif
}

bool endsInBareAmpersand(const QString& text, const XmlError& error)
{
    static const QRegularExpression unfinished("&[^<>&;]*$");
    const QString line = text.section('\n', error.line - 1, error.line - 1);
    return error.line > 0 && unfinished.match(line.left(error.column - 1)).hasMatch();
}

}

void setConfigurationText(const QString& path, const QByteArray& content)
{
    givenText = {path, content};
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
    if (!path.isNull() && path == givenText.path) {
        content = givenText.content;
        return true;
    }
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

bool parseXml(const QByteArray& content, XmlDocument& document, XmlError* error)
{
    if (!content.isEmpty() && content == lastParsed.content) {
        document = lastParsed.document;
        return true;
    }
    const QString text = decoded(content);
    XmlError found;
    if (const auto tree = parseXmlText(text, found)) {
        document = XmlDocument(tree);
        lastParsed.keep(content, document);
        return true;
    }
    found.bareAmpersand = endsInBareAmpersand(text, found);
    if (error)
        *error = found;
    return false;
}

bool loadXml(const QString& path, XmlDocument& document)
{
    QByteArray content;
    return readFile(path, content) && parseXml(content, document);
}

}
