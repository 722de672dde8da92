// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_BESIDE_SAMPLES_H
#define APPS_OXA_EDITOR_BESIDE_SAMPLES_H

#include <QSplitter>
#include <QVBoxLayout>

/// Fills `panel` with its controls and, right of them, its samples, which get what is left.
inline void layOutBeside(QWidget& panel, QWidget* controls, QWidget* samples)
{
    auto* splitter = new QSplitter;
    splitter->addWidget(controls);
    splitter->addWidget(samples);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({1, 1000});
    auto* layout = new QVBoxLayout(&panel);
    layout->addWidget(splitter);
}

#endif
