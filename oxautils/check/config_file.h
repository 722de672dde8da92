// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_CONFIG_FILE_H
#define OXAUTILS_CHECK_CONFIG_FILE_H

#include "oxautils/check/problem.h"
#include "oxautils/config/xml_document.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QStringList>

namespace OXA {

/// A configuration file, as far as it can be read.
struct ConfigFile {
    explicit ConfigFile(const QString& path);

    /// Whether cores can be read from it.
    bool readable() const { return parsed && versionError.isEmpty() && modeError.isEmpty(); }

    /// The elements that describe cores; none when cores cannot be read.
    QList<XmlElement> coreElements() const;

    /// Where the start tag of `element` begins, and which core, port or unit it is in.
    Place placeOf(const XmlElement& element) const;

    /// Where a core names the signal `name` first, or has it as its clock; line 0 when none does.
    Place placeOfSignal(const QString& name) const;

    /// Adds the line and column to a place in a core, or to that of a signal.
    void locate(Place& place) const;

    bool lite = false;
    QString openError; ///< why the file cannot be read; empty when it can
    bool parsed = false;
    XmlError xmlError; ///< why it is malformed, when it could be read
    XmlDocument document;
    XmlElement root;
    QString versionError; ///< the problem with its version; else empty
    QString modeError; ///< the problem with its mode; else empty

private:
    /// The elements of a core that places name.
    struct CoreElements {
        XmlElement core;
        QHash<int, XmlElement> ports;
        QHash<int, XmlElement> units;
        QList<XmlElement> expressions;
    };

    void indexCores();
    void setStart(const XmlElement& element, Place& place) const;
    XmlElement signalIn(const XmlElement& element, const QString& name) const;

    QStringList m_lines;
    QList<CoreElements> m_cores;
    QHash<QPair<int, int>, int> m_positions; // of cores, by the line and column of their tags' ends
    /// The first element of each signal below an element, by that element's line and column.
    mutable QHash<QPair<int, int>, QHash<QString, XmlElement>> m_signals;
};

/// The children of `parent` named `tag`.
QList<XmlElement> childElements(const XmlElement& parent, const char* tag);

}

#endif
