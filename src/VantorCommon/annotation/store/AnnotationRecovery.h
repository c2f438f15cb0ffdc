// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/Export.h>

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

/// Annotations that a process has left behind unsaved, see SCenterOptions::bAnnotationJournal. Any thread.
namespace AnnotationRecovery
{
/// Those of one view.
struct SFound {
    QString strJournal;    ///< path of the journal, by which the other functions know it
    QStringList lstImages; ///< paths of the annotated images; empty for one without a file, such as a capture
    QDateTime time;        ///< of the last step
    int nSteps = 0;        ///< how many were not saved
    int nObjects = 0;      ///< the annotations that it brings back
};
/// Those of one file of a view.
struct SImage {
    QString strImage;                        ///< as in SFound
    Vantor::Annotations::SDocument document; ///< with the places on the picture in the file
};

/// The folder of the journals: "vantor/journal" in $XDG_STATE_HOME or else in ~/.local/state.
VANTORCOMMON_EXPORT QString GetFolder();
/// What no living process holds, the newest first: at most 20 sets that are no older than 30 days. Journals
/// beyond that, and those without anything unsaved, are deleted.
VANTORCOMMON_EXPORT std::vector<SFound> Find();
/// Reads the annotations of a journal, for each file that has some unsaved.
/// @return a failure when there is none; its remarks tell when the journal is damaged and only a part came
///         back
VANTORCOMMON_EXPORT Vantor::Annotations::SReport Read(const QString& strJournal,
                                                      std::vector<SImage>& vctImages);
/// Deletes a journal, unless a living process holds it.
VANTORCOMMON_EXPORT void Discard(const QString& strJournal);
} // namespace AnnotationRecovery
