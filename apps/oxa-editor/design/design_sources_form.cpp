// SPDX-License-Identifier: Apache-2.0
#include "design_sources_form.h"

#include "oxa-editor/least_lines.h"

#include "oxautils/model/shown_text.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

using namespace OXA;

namespace {

bool isList(const QString& file) { return file.endsWith(".f", Qt::CaseInsensitive); }

}

DesignSourcesForm::DesignSourcesForm(Document& document, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_files(new QListWidget)
    , m_options(new QLabel)
    , m_top(new QLineEdit)
{
    layOut();
    connect(m_top, &QLineEdit::editingFinished, this, &DesignSourcesForm::takeTop);
    connect(&m_document, &Document::replaced, this, &DesignSourcesForm::load);
    connect(&m_document, &Document::pathChanged, this, &DesignSourcesForm::follow);
}

void DesignSourcesForm::layOut()
{
    auto* label = new QLabel(tr("Sources of the design:"));
    label->setBuddy(m_files);
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_files->setTextElideMode(Qt::ElideMiddle);
    m_files->setAccessibleName(tr("Sources of the design"));
    keepLeastLines(*m_files);
    m_options->setTextFormat(Qt::PlainText);
    m_options->setWordWrap(true);
    m_options->hide();
    m_top->setPlaceholderText(tr("the module without instances"));
    auto* add = new QPushButton(tr("Add Sources…"));
    connect(add, &QPushButton::clicked, this, &DesignSourcesForm::browse);
    auto* remove = new QPushButton(tr("Remove Sources"));
    connect(remove, &QPushButton::clicked, this, &DesignSourcesForm::remove);
    auto* key = new QShortcut(QKeySequence::Delete, m_files, nullptr, nullptr, Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, this, &DesignSourcesForm::remove);
    const auto showChoice = [=] { remove->setEnabled(!m_files->selectedItems().isEmpty()); };
    connect(m_files, &QListWidget::itemSelectionChanged, this, showChoice);
    showChoice();

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto* form = new QFormLayout;
    form->addRow(tr("Top module:"), m_top);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_files, 1);
    layout->addWidget(m_options);
    layout->addLayout(buttons);
    layout->addLayout(form);
}

QDir DesignSourcesForm::directory() const { return QFileInfo(m_document.path()).absoluteDir(); }

void DesignSourcesForm::browse()
{
    const QString last = m_sources.files.value(m_sources.files.size() - 1);
    add(QFileDialog::getOpenFileNames(this, tr("Add Sources"),
        last.isEmpty() ? directory().path() : QFileInfo(last).path(),
        tr("Sources and lists of them (*.v *.sv *.vhd *.vhdl *.json *.f);;All files (*)")));
}

void DesignSourcesForm::add(const QStringList& files)
{
    DesignSources sources = m_sources;
    QString error;
    for (const QString& file : files) {
        if (!isList(file))
            sources.files += QFileInfo(file).absoluteFilePath();
        else if (!readDesignList(file, QFileInfo(file).absolutePath(), sources, &error))
            return Q_EMIT failed(error);
    }
    sources.files.removeDuplicates();
    change(sources);
}

void DesignSourcesForm::remove()
{
    QList<int> rows;
    for (const QListWidgetItem* item : m_files->selectedItems())
        rows += m_files->row(item);
    std::sort(rows.begin(), rows.end());
    DesignSources sources = m_sources;
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        sources.files.removeAt(*row);
    change(sources);
}

void DesignSourcesForm::takeTop()
{
    DesignSources sources = m_sources;
    sources.top = m_top->text().trimmed();
    if (sources.top != m_sources.top)
        change(sources);
}

void DesignSourcesForm::change(const DesignSources& sources)
{
    m_sources = sources;
    show();
    Q_EMIT changed();
    if (!m_document.path().isEmpty())
        remember();
}

/// Another document was opened.
void DesignSourcesForm::load()
{
    m_sources = DesignSources();
    m_rememberedFor = m_document.path();
    QString error;
    m_unreadable
        = !m_rememberedFor.isEmpty() && !readRememberedDesign(m_rememberedFor, m_sources, &error);
    show();
    Q_EMIT changed();
    if (m_unreadable)
        Q_EMIT failed(error);
}

/// The document was saved; under a new name, the list of sources goes with it.
void DesignSourcesForm::follow()
{
    if (m_document.path() == m_rememberedFor)
        return;
    m_rememberedFor = m_document.path();
    m_unreadable = false;
    if (!m_sources.isEmpty())
        remember();
}

void DesignSourcesForm::remember()
{
    QString error;
    if (m_unreadable)
        Q_EMIT failed(tr("The sources are not saved, because %1 cannot be read: correct or "
                         "delete it and open the configuration again.")
                          .arg(shownText(designListOf(m_rememberedFor))));
    else if (!rememberDesign(m_rememberedFor, m_sources, &error))
        Q_EMIT failed(tr("The sources are not saved: %1").arg(error));
}

void DesignSourcesForm::show()
{
    m_files->clear();
    for (const QString& file : qAsConst(m_sources.files)) {
        const QString below = directory().relativeFilePath(file);
        auto* item = new QListWidgetItem(shownText(below.startsWith("../..") ? file : below));
        item->setToolTip(shownText(file).toHtmlEscaped());
        m_files->addItem(item);
    }
    m_top->setText(m_sources.top);
    QStringList options;
    for (const QString& path : qAsConst(m_sources.includeDirs))
        options += "-I " + path;
    for (const QString& define : qAsConst(m_sources.defines))
        options += "-D " + define;
    for (const QString& parameter : qAsConst(m_sources.parameters))
        options += "-P " + parameter;
    m_options->setText(shownText(options.join(' ')));
    m_options->setVisible(!options.isEmpty());
}
