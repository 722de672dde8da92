// SPDX-License-Identifier: Apache-2.0
// The widgets of the panel.

#include "target_panel.h"

#include "repeat_rows.h"
#include "target_link.h"

#include "oxa-editor/least_lines.h"
#include "oxa-editor/narrow_button.h"
#include "oxa-editor/wave/wave_view.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace {

constexpr int kProblemLines = 3; // visible

}

QWidget* TargetPanel::makeControls()
{
    m_builtFrom->setPlaceholderText(tr("the configuration's file"));
    m_builtFrom->setToolTip(
        tr("The configuration that the target was built from, when the one shown was "
           "changed since"));
    m_cores->setAccessibleName(tr("Cores of the target"));
    m_cores->setHeaderLabels({tr("Core"), tr("Signals and depth"), tr("State")});
    m_cores->setRootIsDecorated(false);
    m_cores->setUniformRowHeights(true);
    m_cores->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    keepLeastLines(*m_cores);
    m_state->setWordWrap(true);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* controls = new QWidget;
    auto* layout = new QVBoxLayout(controls);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout;
    m_link = new TargetLink(*form, this);
    auto* file = new QHBoxLayout;
    auto* label = new QLabel(tr("Built from:"));
    label->setBuddy(m_builtFrom);
    file->addWidget(m_builtFrom, 1);
    addButton(tr("Bro&wse…"), tr("Choose the configuration that the target was built from"),
        &TargetPanel::browse, *file);
    form->addRow(label, file);
    m_repeat = new RepeatRows(*form, this);
    layout->addLayout(form);
    auto* buttons = new QHBoxLayout;
    m_connect = addButton(tr("Connect"), tr("Find the analyzer in the target, without arming it"),
        &TargetPanel::connectToChip, *buttons);
    m_arm = addButton(tr("Arm"),
        tr("Arm the chosen cores, and read the samples when they have triggered"),
        &TargetPanel::arm, *buttons);
    m_force = addButton(tr("Force"), tr("Force the trigger of all cores that wait for it"),
        &TargetPanel::force, *buttons);
    m_stop = addButton(tr("&Stop"), tr("Stop the cores, and read what they captured"),
        &TargetPanel::stop, *buttons);
    m_saveButton
        = addButton(tr("Save…"), tr("Write the samples to a file"), &TargetPanel::save, *buttons);
    layout->addLayout(buttons);
    layout->addWidget(m_cores, 1);
    m_joint->setToolTip(tr("Show the samples of all cores on one axis of time"));
    m_joint->hide();
    connect(m_joint, &QCheckBox::toggled, this, &TargetPanel::showWaveform);
    layout->addWidget(m_joint);
    layout->addWidget(m_state);
    layout->addWidget(m_link->log());
    return controls;
}

QWidget* TargetPanel::makeSamples()
{
    m_problems->setAccessibleName(tr("Problems of the capture"));
    keepMostLines(*m_problems, kProblemLines);
    m_problems->setWordWrap(true);
    m_problems->hide();
    m_age->hide();
    m_axis->hide();
    m_axis->setTextFormat(Qt::PlainText);
    m_axis->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_axis->setWordWrap(true);
    auto* samples = new QWidget;
    auto* layout = new QVBoxLayout(samples);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_problems);
    layout->addWidget(m_age);
    layout->addWidget(m_axis);
    layout->addWidget(m_view, 1);
    return samples;
}

QPushButton* TargetPanel::addButton(
    const QString& text, const QString& tip, void (TargetPanel::*act)(), QLayout& layout)
{
    auto* button = new QPushButton(text);
    allowNarrow(*button); // the waveform gets the width
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, act);
    layout.addWidget(button);
    return button;
}

void TargetPanel::browse()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Configuration of the Target"),
        QFileInfo(m_document.path()).path(), tr("Analyzer configurations (*.oxa);;All files (*)"));
    if (path.isEmpty())
        return;
    m_builtFrom->setText(QDir::toNativeSeparators(path));
    m_builtFromOf.insert(m_document.path(), m_builtFrom->text());
}
