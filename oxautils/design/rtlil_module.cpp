// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/rtlil_module.h"

#include <QFile>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostBits = 1 << 28; // of a module

/// One line, word by word.
class Line {
public:
    explicit Line(const QByteArray& text)
        : m_text(text)
    {
    }

    /// The next word; empty at the end.
    QByteArray word()
    {
        skipSpaces();
        const int begin = m_at;
        while (m_at < m_text.size() && !isSpace(m_text.at(m_at)))
            ++m_at;
        return m_text.mid(begin, m_at - begin);
    }

    char peek()
    {
        skipSpaces();
        return m_at < m_text.size() ? m_text.at(m_at) : '\0';
    }

    /// The rest as a quoted text, without its escapes; other text is not changed.
    QByteArray text()
    {
        if (peek() != '"')
            return word();
        QByteArray result;
        for (int i = m_at + 1; i < m_text.size() && m_text.at(i) != '"'; ++i) {
            if (m_text.at(i) == '\\' && i + 1 < m_text.size())
                ++i;
            result += m_text.at(i);
        }
        return result;
    }

private:
    static bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    void skipSpaces()
    {
        while (m_at < m_text.size() && isSpace(m_text.at(m_at)))
            ++m_at;
    }

    const QByteArray& m_text;
    int m_at = 0;
};

bool isName(const QByteArray& word) { return word.startsWith('\\') || word.startsWith('$'); }

QString shownName(const QByteArray& name)
{
    return QString::fromUtf8(name.startsWith('\\') ? name.mid(1) : name);
}

class Reader {
public:
    explicit Reader(RtlilDesign& design)
        : m_design(design)
    {
    }

    bool read(QFile& file)
    {
        while (!file.atEnd()) {
            const QByteArray text = file.readLine();
            take(text);
            if (m_module && m_module->bitCount > kMostBits)
                return false;
        }
        return !m_module && !m_design.modules.isEmpty();
    }

private:
    void take(const QByteArray& text)
    {
        Line line(text);
        const QByteArray word = line.word();
        if (word == "attribute") {
            const QByteArray name = line.word();
            m_attributes.insert(name, line.text());
            return;
        }
        if (word == "module")
            takeModule(line.word());
        else if (word == "end")
            takeEnd();
        else if (m_module)
            takeInModule(word, line);
        if (!word.isEmpty())
            m_attributes.clear();
    }

    void takeModule(const QByteArray& name)
    {
        m_module = &m_design.modules[name];
        m_name = name;
        m_isBox = m_attributes.contains("\\blackbox") || m_attributes.contains("\\whitebox");
        if (m_attributes.contains("\\top"))
            m_design.top = name;
        takeKept(name);
    }

    void takeKept(const QByteArray& name)
    {
        if (m_attributes.contains("\\keep_hierarchy"))
            m_design.kept += shownName(name);
    }

    void takeInModule(const QByteArray& word, Line& line)
    {
        if (word == "wire")
            takeWire(line);
        else if (word == "memory")
            takeMemory(line);
        else if (word == "cell")
            takeCell(line);
        else if (word == "parameter" && line.word() == "\\CLK_POLARITY")
            m_falling = line.word().endsWith('0');
        else if (word == "connect")
            takeConnect(line);
    }

    void takeWire(Line& line)
    {
        DesignSignal signal;
        QByteArray word;
        while (!(word = line.word()).isEmpty() && !isName(word)) {
            if (word == "width")
                signal.width = line.word().toInt();
            else if (word == "offset")
                signal.offset = line.word().toInt();
            else if (word == "upto")
                signal.ascending = true;
            else
                takeDirection(word, line, signal);
        }
        if (signal.width < 1 || signal.width > kMostBits)
            return;
        const RtlilModule::Wire wire {m_module->bitCount, signal.width};
        m_module->bitCount += signal.width;
        m_module->wires.insert(word, wire);
        // The variables of a function are different ones at each call.
        if (word.startsWith('\\') && !word.contains("$func$"))
            addItem(word, signal, wire.first);
    }

    static void takeDirection(const QByteArray& word, Line& line, DesignSignal& signal)
    {
        if (word == "input")
            signal.direction = DesignSignal::Input;
        else if (word == "output")
            signal.direction = DesignSignal::Output;
        else if (word == "inout")
            signal.direction = DesignSignal::Inout;
        if (signal.direction != DesignSignal::Inside && signal.port == 0)
            signal.port = line.word().toInt();
    }

    void takeMemory(Line& line)
    {
        DesignSignal signal;
        QByteArray word;
        while (!(word = line.word()).isEmpty() && !isName(word)) {
            if (word == "width")
                signal.width = line.word().toInt();
            else if (word == "size")
                signal.memoryWords = line.word().toInt();
        }
        if (word.startsWith('\\') && signal.memoryWords > 0 && signal.width > 0)
            addItem(word, signal, 0);
    }

    void addItem(const QByteArray& name, DesignSignal& signal, int first)
    {
        takePlace(signal);
        takeStates(signal);
        m_module->items.push_back({shownName(name), signal, first});
    }

    // "sub.v:7.5-7.9"; a derived object may have several places.
    void takePlace(DesignSignal& signal)
    {
        const QByteArray place = m_attributes.value("\\src");
        const QByteArray last = place.mid(place.lastIndexOf('|') + 1);
        const int colon = last.lastIndexOf(':');
        if (colon < 0)
            return;
        const QByteArray lines = last.mid(colon + 1);
        signal.line = lines.left(lines.indexOf('.')).toInt();
        QString& name = m_files[last.left(colon)]; // shared by all signals of a file
        if (name.isEmpty())
            name = QString::fromUtf8(last.left(colon));
        signal.file = name;
    }

    // The names of values declared in a package have its prefix.
    void takeStates(DesignSignal& signal) const
    {
        static const QByteArray prefix = "\\enum_value_";
        for (auto it = m_attributes.begin(); it != m_attributes.end(); ++it) {
            if (it.key().startsWith(prefix))
                signal.states.append({QString::fromUtf8(it.key().mid(prefix.size())),
                    shownName(it.value()).section("::", -1)});
        }
        std::sort(signal.states.begin(), signal.states.end());
    }

    void takeCell(Line& line)
    {
        m_inCell = true;
        m_type = line.word();
        m_clock.clear();
        m_outputs.clear();
        m_falling = false;
        const QByteArray name = line.word();
        takeKept(m_name + '/' + name.mid(1));
        m_isRegister = m_type.startsWith('$') && m_type.toLower().contains("dff");
        m_isInstance = m_type.startsWith('\\') || m_type.startsWith("$paramod");
        if (m_type.startsWith("$_")) // "$_DFFE_PN_": the clock's edge is the first letter
            m_falling = m_type.mid(m_type.indexOf('_', 2) + 1, 1) == "N";
        if (m_isInstance) {
            m_isRegister = false;
            m_module->instances.push_back({m_type, shownName(name), {}});
        }
    }

    void takeConnect(Line& line)
    {
        if (!m_inCell) {
            RtlilBits left = bitsOf(line);
            m_module->connections.emplace_back(std::move(left), bitsOf(line));
            return;
        }
        const QByteArray port = line.word();
        if (m_isInstance)
            m_module->instances.back().connections.emplace_back(port, bitsOf(line));
        else if (m_isRegister && (port == "\\CLK" || port == "\\C"))
            m_clock = bitsOf(line);
        else if (m_isRegister && port == "\\Q")
            m_outputs = bitsOf(line);
    }

    void takeEnd()
    {
        if (!m_inCell) {
            m_module = nullptr;
            if (m_isBox && m_name != m_design.top) // stays a cell when the design is flattened
                m_design.modules.remove(m_name);
            return;
        }
        m_inCell = false;
        if (!m_isRegister || m_clock.empty() || m_clock.front() < 0)
            return;
        for (const int bit : m_outputs) {
            if (bit >= 0)
                m_module->registers.push_back({bit, m_clock.front(), m_falling});
        }
    }

    /// The next bits of the line.
    RtlilBits bitsOf(Line& line)
    {
        if (line.peek() != '{')
            return chunk(line, line.word());
        line.word();
        std::vector<RtlilBits> chunks; // most significant first
        for (QByteArray word = line.word(); !word.isEmpty() && word != "}"; word = line.word())
            chunks.push_back(chunk(line, word));
        RtlilBits bits;
        for (auto it = chunks.rbegin(); it != chunks.rend(); ++it)
            bits.insert(bits.end(), it->begin(), it->end());
        return bits;
    }

    /// The bits of one name with an optional range, or of a constant.
    RtlilBits chunk(Line& line, const QByteArray& name)
    {
        if (!isName(name)) {
            const int width = name.left(name.indexOf('\'')).toInt();
            return RtlilBits(size_t(std::clamp(width, 0, kMostBits)), kRtlilConstant);
        }
        const RtlilModule::Wire wire = m_module->wires.value(name);
        int low = 0;
        int high = wire.width - 1;
        if (line.peek() == '[') {
            const QByteArray inside = line.word().mid(1).chopped(1);
            const int colon = inside.indexOf(':');
            high = std::min(high, inside.left(colon < 0 ? inside.size() : colon).toInt());
            low = colon < 0 ? high : std::max(inside.mid(colon + 1).toInt(), 0);
        }
        RtlilBits bits;
        for (int i = low; i <= high; ++i)
            bits.push_back(wire.first + i);
        return bits;
    }

    RtlilDesign& m_design;
    RtlilModule* m_module = nullptr; // being read
    QByteArray m_name; // of it
    bool m_isBox = false; // it has no content that can be reached
    QHash<QByteArray, QByteArray> m_attributes; // of the next object
    QHash<QByteArray, QString> m_files;
    bool m_inCell = false; // the state of that cell:
    QByteArray m_type;
    bool m_isRegister = false;
    bool m_isInstance = false;
    bool m_falling = false;
    RtlilBits m_clock;
    RtlilBits m_outputs;
};

}

bool readRtlil(const QString& path, RtlilDesign& design)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && Reader(design).read(file);
}

}
