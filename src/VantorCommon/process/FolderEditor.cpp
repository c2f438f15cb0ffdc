// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/FolderEditor_p.h>

#include <QEvent>
#include <QFileDialog>

QWidget* FolderEditor::Create(QWidget* pParent)
{
    auto* pDialog = new QFileDialog(pParent);
    pDialog->setOption(QFileDialog::DontUseNativeDialog);
    pDialog->setFileMode(QFileDialog::Directory);
    return pDialog;
}

bool FolderEditor::IsOne(const QObject* pEditor)
{
    return qobject_cast<const QFileDialog*>(pEditor) != nullptr;
}

QString FolderEditor::Chosen(QWidget* pEditor)
{
    const auto* pDialog = qobject_cast<const QFileDialog*>(pEditor);
    const bool bAccepted = pDialog && pDialog->result() == QDialog::Accepted;
    return bAccepted ? pDialog->selectedFiles().value(0) : QString();
}

bool FolderEditor::IsLeftAlone(const QObject* pEditor, const QEvent* pEvent)
{
    return IsOne(pEditor) && pEvent->type() != QEvent::Hide;
}
