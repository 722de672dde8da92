// SPDX-License-Identifier: Apache-2.0
#include "repeat_rows.h"

#include "files/fail.h"
#include "oxacapture/files/capture_result.h"
#include "oxacapture/files/numbered_path.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSpinBox>

#include <limits>

using namespace OXA_CAPTURE;

RepeatRows::RepeatRows(QFormLayout& form, QObject* parent)
    : QObject(parent)
    , m_count(new QSpinBox)
    , m_pattern(new QLineEdit)
{
    m_count->setRange(0, std::numeric_limits<int>::max());
    m_count->setValue(1);
    m_count->setSpecialValueText(tr("until stopped"));
    m_count->setToolTip(tr("The cores are armed again after each capture"));
    m_pattern->setPlaceholderText("cap-%04d.vcd");
    m_pattern->setToolTip(
        tr("A file for each capture, with its number in place of %d, or %04d for four digits; "
           "without, only the last capture is kept"));
    m_pattern->setEnabled(false);
    auto* row = new QHBoxLayout;
    auto* count = new QLabel(tr("Captures:"));
    count->setBuddy(m_count);
    auto* files = new QLabel(tr("Files:"));
    files->setBuddy(m_pattern);
    row->addWidget(m_count);
    row->addWidget(files);
    row->addWidget(m_pattern, 1);
    form.addRow(count, row);
    connect(m_count, QOverload<int>::of(&QSpinBox::valueChanged), this,
        [this](int count) { m_pattern->setEnabled(count != 1); });
}

qint64 RepeatRows::count() const { return m_count->value(); }

bool RepeatRows::takePattern(const QString& base, QString& pattern, QString* error) const
{
    const QString text = m_pattern->text().trimmed();
    pattern.clear();
    if (count() == 1 || text.isEmpty())
        return true;
    if (!isNumbered(text))
        return OXA::fail(
            error, tr("%1: the name needs one place for the number, as in cap-%04d.vcd").arg(text));
    pattern = QDir(base).absoluteFilePath(QDir::fromNativeSeparators(text));
    const QString first = numberedPath(pattern, 0);
    if (!isNumbered(pattern))
        return OXA::fail(
            error, tr("%1: the directory has another place for a number").arg(pattern));
    if (!mayWriteCapture(first, error))
        return false;
    return !QFileInfo::exists(first)
        || QMessageBox::question(m_pattern->window(), tr("Overwrite?"),
               tr("%1 exists. Replace it, and those of the captures that follow?")
                   .arg(QFileInfo(first).fileName()),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}
