// SPDX-License-Identifier: Apache-2.0
#include "target_link.h"

#include "oxa-editor/narrow_button.h"

#include "oxacapture/target/openocd_link.h"

#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSerialPortInfo>
#include <QSettings>

namespace {

constexpr char kAddressSetting[] = "target/openocd";
constexpr char kTapSetting[] = "target/tap";
constexpr char kConfigurationSetting[] = "target/openocdConfiguration";
constexpr int kFewestCharacters = 14; // of a file name
constexpr int kMostLines = 2000; // of the log
constexpr int kLogLines = 5; // visible

/// The serial ports of this computer that a chip may be at.
QStringList serialPorts()
{
    QStringList ports;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
        ports += port.systemLocation();
    return ports;
}

}

TargetLink::TargetLink(QFormLayout& form, QObject* parent)
    : QObject(parent)
    , m_address(new QLineEdit(
          QSettings().value(kAddressSetting, OXA_CAPTURE::kOpenOcdAddress).toString()))
    , m_tap(new QLineEdit(QSettings().value(kTapSetting).toString()))
    , m_configuration(new QLineEdit(QSettings().value(kConfigurationSetting).toString()))
    , m_end(new QPushButton(tr("End")))
    , m_output(new QPushButton(tr("Output")))
    , m_log(new QPlainTextEdit)
{
    layOut(form);
    connectParts();
    showState();
}

void TargetLink::layOut(QFormLayout& form)
{
    m_address->setToolTip(tr(
        "The host and port of OpenOCD's Tcl server, or the serial port of an analyzer with a UART"
        " link: /dev/ttyUSB1, or /dev/ttyUSB1@9600 when it does not start at 115200"));
    auto* ports = new QCompleter(serialPorts(), m_address);
    ports->setCaseSensitivity(Qt::CaseInsensitive);
    m_address->setCompleter(ports);
    m_tap->setPlaceholderText(tr("the chip with an analyzer"));
    m_tap->setToolTip(tr("The chip's name in OpenOCD's chain"));
    m_configuration->setPlaceholderText(tr("none: OpenOCD is running"));
    m_configuration->setToolTip(
        tr("OpenOCD's configuration file for the adapter and the chip. With one, Connect and Arm "
           "start OpenOCD, which ends with this window"));
    m_end->setToolTip(tr("End the OpenOCD that was started here"));
    auto* choose = new QPushButton(tr("Choose…"));
    choose->setToolTip(tr("Choose OpenOCD's configuration file"));
    connect(choose, &QPushButton::clicked, this, &TargetLink::browse);
    for (QPushButton* button : {choose, m_end, m_output})
        allowNarrow(*button);
    m_configuration->setMinimumWidth(
        m_configuration->fontMetrics().averageCharWidth() * kFewestCharacters);
    auto* file = new QHBoxLayout;
    file->addWidget(m_configuration, 1);
    file->addWidget(choose);
    file->addWidget(m_end);
    file->addWidget(m_output);
    m_output->setCheckable(true);
    m_output->setToolTip(tr("Show what the OpenOCD writes that was started here"));
    auto* label = new QLabel(tr("Start OpenOCD with:"));
    label->setBuddy(m_configuration);
    form.addRow(tr("OpenOCD or port:"), m_address);
    form.addRow(tr("TAP:"), m_tap);
    form.addRow(label, file);
    m_log->setAccessibleName(tr("Output of OpenOCD"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(kMostLines);
    m_log->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_log->setMaximumHeight(m_log->fontMetrics().lineSpacing() * (kLogLines + 1));
    m_log->hide();
}

void TargetLink::connectParts()
{
    for (QLineEdit* field : {m_address, m_tap, m_configuration})
        connect(field, &QLineEdit::returnPressed, this, &TargetLink::connectWanted);
    connect(m_configuration, &QLineEdit::textChanged, this, &TargetLink::showState);
    connect(m_output, &QPushButton::toggled, m_log, &QWidget::setVisible);
    connect(m_end, &QPushButton::clicked, this, &TargetLink::end);
    connect(&m_openocd, &OpenOcdProcess::said, this, [this](const QString& text) {
        m_log->moveCursor(QTextCursor::End);
        m_log->insertPlainText(text);
        m_log->moveCursor(QTextCursor::End);
    });
    connect(&m_openocd, &OpenOcdProcess::ready, this, &TargetLink::showState);
    connect(&m_openocd, &OpenOcdProcess::ready, this, &TargetLink::ready);
    connect(&m_openocd, &OpenOcdProcess::ended, this, [this](const QString& reason) {
        m_output->setChecked(m_output->isChecked() || !reason.isEmpty());
        showState();
        Q_EMIT ended(reason);
    });
}

void TargetLink::browse()
{
    const QString path
        = QFileDialog::getOpenFileName(m_configuration->window(), tr("Configuration of OpenOCD"),
            QFileInfo(m_configuration->text()).path(), tr("OpenOCD (*.cfg);;All files (*)"));
    if (!path.isEmpty())
        m_configuration->setText(QDir::toNativeSeparators(path));
}

QString TargetLink::address() const
{
    return m_openocd.address().isEmpty() ? m_address->text().trimmed() : m_openocd.address();
}

QString TargetLink::tap() const { return m_tap->text().trimmed(); }

bool TargetLink::needsStart() const
{
    return !m_configuration->text().trimmed().isEmpty() && !m_openocd.isRunning();
}

void TargetLink::start()
{
    m_log->clear();
    m_openocd.start(QDir::fromNativeSeparators(m_configuration->text().trimmed()));
    showState();
}

void TargetLink::remember() const
{
    QSettings settings;
    settings.setValue(kAddressSetting, m_address->text().trimmed());
    settings.setValue(kTapSetting, tap());
    settings.setValue(kConfigurationSetting, m_configuration->text().trimmed());
}

void TargetLink::showState()
{
    m_end->setEnabled(m_openocd.isRunning());
    m_configuration->setReadOnly(m_openocd.isRunning());
    m_address->setEnabled(!m_openocd.isRunning() && m_configuration->text().trimmed().isEmpty());
}
