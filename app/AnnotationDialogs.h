// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>

#include <QSize>
#include <QString>
#include <vector>

class QWidget;

/// The dialogs that ask for files of annotations. They block while they are open.
namespace AnnotationDialogs
{
/// A file to write; its path is empty when the user has cancelled.
struct STarget {
    QString strPath;
    QString strFormat; ///< a name of Vantor::Annotations::GetFormats
};

/// Asks for a file in the library's own format. @return empty when cancelled
QString ChooseToOpen(QWidget* pParent, const QString& strFolder);
/// Asks for a file in any format. @return empty when cancelled
QString ChooseToImport(QWidget* pParent, const QString& strFolder);
/// Asks for a name in the library's own format and completes its suffix.
/// @param strProposal  a path
STarget ChooseToSave(QWidget* pParent, const QString& strProposal);
/// Asks for a name in any format.
/// @param strProposal  a path without suffix
STarget ChooseToExport(QWidget* pParent, const QString& strProposal);

/// What to do with a file of annotations that somebody else has changed.
enum EChanged : int { EChanged_Overwrite, EChanged_SaveAs, EChanged_Cancel };
EChanged AskChanged(QWidget* pParent, const QString& strPath);

/// What to do with annotations of an image of another size.
EOtherSize AskSize(QWidget* pParent, const Vantor::Annotations::SPage& page, const QSize& size);

/// Shows what a file would lose, if it would lose anything. @return whether to write it
bool ConfirmLoss(QWidget* pParent, const QString& strFormat,
                 const std::vector<Vantor::Annotations::SRemark>& vctRemarks);
} // namespace AnnotationDialogs
