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
/// A file to be written; its path is empty when somebody has cancelled.
struct STarget {
    QString strPath;
    QString strFormat; ///< a name of Vantor::Annotations::GetFormats
};

/// A file in our own format. @return empty when cancelled
QString ChooseToOpen(QWidget* pParent, const QString& strFolder);
/// A file in any format. @return empty when cancelled
QString ChooseToImport(QWidget* pParent, const QString& strFolder);
/// A name in our own format; a suffix is appended to one without it.
/// @param strProposal  a path
STarget ChooseToSave(QWidget* pParent, const QString& strProposal);
/// A name in any format.
/// @param strProposal  a path without suffix
STarget ChooseToExport(QWidget* pParent, const QString& strProposal);

/// What to do with a file of annotations that somebody else has changed.
enum EChanged : int { EChanged_Overwrite, EChanged_SaveAs, EChanged_Cancel };
EChanged AskChanged(QWidget* pParent, const QString& strPath);

/// What to do with annotations of an image of another size.
EOtherSize AskSize(QWidget* pParent, const Vantor::Annotations::SPage& page, const QSize& size);

/// Shows what a file would not say, if there is anything. @return whether to write it
bool ConfirmLoss(QWidget* pParent, const QString& strFormat,
                 const std::vector<Vantor::Annotations::SRemark>& vctRemarks);
} // namespace AnnotationDialogs
