// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

class QEvent;
class QObject;
class QWidget;

/// The editor of a delegate for a folder: a file dialog in a window of its own. GUI thread only.
namespace FolderEditor
{
/// The platform's own dialog would never commit, hence Qt's. It shows files too, by which the person knows
/// the folder. The parent owns it.
QWidget* Create(QWidget* pParent);
/// Whether an editor was made by Create.
bool IsOne(const QObject* pEditor);
/// The folder that was accepted; null when the dialog was cancelled or is still open.
QString Chosen(QWidget* pEditor);
/// Whether the delegate must not look at this event of an editor: a file dialog ends by its own buttons and
/// keys, not when Return or Tab is pressed somewhere in it. Its hiding is all that counts.
bool IsLeftAlone(const QObject* pEditor, const QEvent* pEvent);
} // namespace FolderEditor
