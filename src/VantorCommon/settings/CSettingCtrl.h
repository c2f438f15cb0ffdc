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

/// Keeps the settings of the process in the SQLite file "settings.data": reads all of them in its constructor
/// and stores each change at once. Without a file that can be opened the settings live in memory only. GUI
/// thread only; several processes may use one file.
class VANTORCOMMON_EXPORT CSettingCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Loads the settings, shows them in the dialog and connects the two. Loading writes nothing back.
    /// @param pView  not owned. Without it, changes of the settings are not stored automatically.
    explicit CSettingCtrl(CSettingDlg* pView);
    ~CSettingCtrl() override;

    /// Opens the file in the folder of the setting "GENERAL_PROGRAM_CONFIG_DIR", the folder "Vantor" of the
    /// user's documents by default. It first creates a missing or empty file, in one step, so that an
    /// existing file always has its table. It creates the default folder if necessary, but never a named one.
    /// @return whether the file is open
    bool OpenSettingFile();

    /// Copies every stored value into the settings of the process. Deliberate: as a text, whatever its type
    /// was; readers convert it. If the file cannot be read, it keeps the settings, logs and announces the
    /// failure.
    void LoadParameter();

    /// Stores a value and logs the result; it also announces a failure. It refuses a key or value with a
    /// single quote before it runs a statement. Deliberate: over a stored value a number is written bare, so
    /// that the file holds it as SQLite writes numbers (true as 1, a double with 15 digits).
    /// @return true: the value is in the file and survives any end of the process
    bool UpdateParameter(const QString& strKey, QVariant value);

    /// Lets the dialog show the settings.
    void UpdateParameterView();

    bool Undo() override; ///< false: settings have no undo
    bool Redo() override; ///< false

public Q_SLOTS:
    /// Calls UpdateParameter; signal_Failed and the log tell the result.
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
