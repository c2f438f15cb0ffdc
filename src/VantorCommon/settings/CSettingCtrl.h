// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QPointer>
#include <QString>
#include <QVariant>
#include <memory>

class CDatabaseHelper;
class CDatabaseModelFactory;
class CSettingDlg;

/// Keeps the settings of the process in the SQLite file "settings.data": reads them all when it is made, and
/// stores each changed one at once. Without a file that can be opened the settings live in memory only. GUI
/// thread only; several processes may use one file.
class VANTORCOMMON_EXPORT CSettingCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Loads the settings, shows them in the dialog and connects the two. Loading writes nothing back.
    /// @param pView  not owned. Without one, what is changed in the settings is not stored by itself.
    explicit CSettingCtrl(CSettingDlg* pView);
    ~CSettingCtrl() override;

    /// Opens the file in the folder of the setting "GENERAL_PROGRAM_CONFIG_DIR", the folder "Vantor" of the
    /// user's documents by default. A file that is missing or empty is made first, in one step: whenever it
    /// is there, it has its table. The default folder is made too if need be, a named one is not.
    /// @return whether the file is open
    bool OpenSettingFile();

    /// Takes every stored value over into the settings of the process. Deliberate: as a text, whatever its
    /// type was; readers convert it. A file that cannot be read leaves the settings as they are, is
    /// logged and announced.
    void LoadParameter();

    /// Stores a value and logs whether that went well; a failure is announced, too. A key or value that holds
    /// a single quote is refused before anything is run. Deliberate: over a stored value a number is written
    /// bare, so that the file holds it as SQLite writes numbers (true as 1, a double with 15 digits).
    /// @return true: the value is in the file and survives the end of the process, however it comes
    bool UpdateParameter(const QString& strKey, QVariant value);

    /// Lets the dialog show the settings.
    void UpdateParameterView();

    bool Undo() override; ///< false: settings have no undo
    bool Redo() override; ///< false

public Q_SLOTS:
    /// UpdateParameter, with its result left to signal_Failed and the log.
    void slot_UpdateSettingParameter(const QString& strKey, const QVariant& var);

Q_SIGNALS:
    /// The settings could not be loaded, or one not be stored, and which: one line in English.
    void signal_Failed(const QString& strMessage);

private:
    bool Store(const QString& strKey, const QVariant& value);

    QPointer<CSettingDlg> m_pView;
    std::unique_ptr<CDatabaseModelFactory> m_pFactory;
    std::unique_ptr<CDatabaseHelper> m_pDatabaseHelper;
};
