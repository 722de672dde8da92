// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/design_sources.h"

#include "files/fail.h"
#include "oxautils/model/shown_text.h"

#include "files/replace_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace OXA {

namespace {

constexpr int kDeepest = 16; // levels of lists
constexpr qint64 kMostBytes = 16 << 20; // of a list

struct Word {
    QString text;
    int line = 0;
    bool isQuoted = false; // from its first character on, so it is not an option
};

/// The words of a list; an unclosed quote ends with its line.
class ListWords {
public:
    explicit ListWords(const QString& text)
    {
        const QStringList lines = text.split('\n');
        for (int i = 0; i < lines.size(); ++i)
            addLine(lines.at(i), i + 1);
    }

    QVector<Word> words;

private:
    void addLine(const QString& line, int number)
    {
        Word word {{}, number, false};
        bool open = false; // a word has begun
        QChar quote;
        for (int i = 0; i < line.size(); ++i) {
            const QChar c = line.at(i);
            if (quote.isNull() && c.isSpace()) {
                if (open)
                    words += word;
                word = {{}, number, false};
                open = false;
                continue;
            }
            if (!open && (c == '#' || line.mid(i, 2) == "//"))
                break;
            word.isQuoted |= !open && (c == '"' || c == '\'');
            open = true;
            if (c == quote)
                quote = QChar();
            else if (quote.isNull() && (c == '"' || c == '\''))
                quote = c;
            else if (c == '\\' && quote != '\'' && i + 1 < line.size())
                word.text += line.at(++i);
            else
                word.text += c;
        }
        if (open)
            words += word;
    }
};

class ListReader {
public:
    ListReader(DesignSources& sources, QString* error)
        : m_sources(sources)
        , m_error(error)
    {
    }

    bool read(const QString& path, const QString& from)
    {
        if (++m_depth > kDeepest)
            return fail(m_error, QString("%1: lists are nested too deeply").arg(shownText(path)));
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return fail(m_error,
                QString("%1: cannot be read: %2").arg(shownText(path), file.errorString()));
        const QByteArray bytes = file.read(kMostBytes);
        if (!file.atEnd() || bytes.contains('\0'))
            return fail(m_error, QString("%1: is not a list of sources").arg(shownText(path)));
        const QVector<Word> words = ListWords(QString::fromUtf8(bytes)).words;
        for (int i = 0; i < words.size(); ++i) {
            if (!take(path, from, words, i))
                return false;
        }
        --m_depth;
        return true;
    }

private:
    bool failAt(const QString& path, const Word& word, const QString& what)
    {
        return fail(m_error,
            QString("%1:%2: \"%3\" %4")
                .arg(shownText(path), QString::number(word.line), shownText(word.text), what));
    }

    // Handles the word at `i`, for an option with the word of its value.
    bool take(const QString& path, const QString& from, const QVector<Word>& words, int& i)
    {
        const Word& word = words.at(i);
        const QString& text = word.text;
        if (!word.isQuoted && text.startsWith('+'))
            return takePlus(path, from, word);
        if (word.isQuoted || !text.startsWith('-'))
            return addFile(from, text);
        static const QStringList ignored {"-sv", "--sv", "-g2005", "-g2005-sv", "-g2009", "-g2012"};
        if (ignored.contains(text))
            return true;
        QString value;
        const QString name = optionName(text, value);
        if (name.isEmpty())
            return failAt(path, word, "is not a supported option");
        if (value.isEmpty()) {
            if (++i == words.size())
                return failAt(path, word, "has no value");
            value = words.at(i).text;
        }
        return takeOption(name, value, path, from);
    }

    // "-Idir" contains its value, "-I dir" does not.
    static QString optionName(const QString& text, QString& value)
    {
        for (const char* name : {"--top-module", "--top", "-top", "-f", "-F", "-v"}) {
            if (text == name)
                return name[1] == '-' || name[1] == 't' ? "--top" : name;
        }
        if (text.size() < 2 || !QStringLiteral("IDP").contains(text.at(1)))
            return {};
        value = text.mid(2);
        return text.left(2);
    }

    bool takeOption(
        const QString& name, const QString& value, const QString& path, const QString& from)
    {
        if (name == "--top")
            m_sources.top = value;
        else if (name == "-I")
            m_sources.includeDirs += inDirectory(from, value);
        else if (name == "-D")
            m_sources.defines += value;
        else if (name == "-P")
            m_sources.parameters += value.section('.', -1);
        else if (name == "-v")
            return addFile(from, value);
        else if (name == "-f")
            return read(inDirectory(from, value), from);
        else
            return read(inDirectory(from, value),
                QFileInfo(inDirectory(QFileInfo(path).path(), value)).path());
        return true;
    }

    bool takePlus(const QString& path, const QString& from, const Word& word)
    {
        QStringList parts = word.text.split('+', Qt::SkipEmptyParts);
        const QString name = parts.isEmpty() ? QString() : parts.takeFirst();
        if (name == "incdir") {
            for (const QString& part : parts)
                m_sources.includeDirs += inDirectory(from, part);
        } else if (name == "define") {
            m_sources.defines += parts;
        } else if (name != "libext") {
            return failAt(path, word, "is not a supported option");
        }
        return true;
    }

    bool addFile(const QString& from, const QString& name)
    {
        m_sources.files += inDirectory(from, name);
        return true;
    }

    static QString inDirectory(const QString& from, const QString& name)
    {
        return QDir::cleanPath(QDir(from).absoluteFilePath(name));
    }

    DesignSources& m_sources;
    QString* m_error;
    int m_depth = 0;
};

QString quoted(const QString& text)
{
    QString word = "\"";
    for (const QChar c : text) {
        if (c == '"' || c == '\\')
            word += '\\';
        word += c;
    }
    return word + '"';
}

/// `path` relative to the list's directory when it is below, so that a project can be moved.
QString stored(const QString& path, const QDir& directory)
{
    const QString relative = directory.relativeFilePath(QFileInfo(path).absoluteFilePath());
    return quoted(relative.startsWith("../../..") ? QFileInfo(path).absoluteFilePath() : relative);
}

QString listOf(const DesignSources& sources, const QDir& directory)
{
    QString text
        = "# The design that the configuration beside this file watches: a command file as "
          "Icarus and\n# Verilator take it, with --top and -P.\n";
    if (!sources.top.isEmpty())
        text += "--top " + quoted(sources.top) + '\n';
    for (const QString& parameter : sources.parameters)
        text += "-P " + quoted(parameter) + '\n';
    for (const QString& define : sources.defines)
        text += "-D " + quoted(define) + '\n';
    for (const QString& include : sources.includeDirs)
        text += "-I " + stored(include, directory) + '\n';
    for (const QString& file : sources.files)
        text += stored(file, directory) + '\n';
    return text;
}

}

bool readDesignList(
    const QString& path, const QString& from, DesignSources& sources, QString* error)
{
    return ListReader(sources, error).read(path, from);
}

QString designListOf(const QString& configuration) { return configuration + ".design"; }

bool readRememberedDesign(const QString& configuration, DesignSources& sources, QString* error)
{
    const QString path = designListOf(configuration);
    return !QFileInfo::exists(path)
        || readDesignList(path, QFileInfo(path).absolutePath(), sources, error);
}

bool rememberDesign(const QString& configuration, const DesignSources& sources, QString* error)
{
    const QString path = designListOf(configuration);
    const QStringList words = sources.files + sources.includeDirs + sources.defines
        + sources.parameters + QStringList(sources.top);
    if (words.join(' ').contains('\n'))
        return fail(error, shownText(path) + ": cannot contain a name with a line end");
    const QByteArray text = listOf(sources, QFileInfo(path).absoluteDir()).toUtf8();
    QFile old(path);
    if (old.open(QIODevice::ReadOnly) && old.readAll() == text)
        return true;
    return OXA_FILES::replaceFile(path, text, error);
}

}
