#pragma once

#include "IRipEngineDriverUI.h"

#include <string>

// The kind string "BexRipEngine_RipServer": one static that the _Kind export
// and every object's kind() return, so hosts may compare pointers or text.
const wchar_t *bexRipEngineKind();
// True when kind spells the module's kind string, compared character by
// character (null is never the kind).
bool isBexRipEngineKind(const wchar_t *kind);

// The module object. It has no state of its own: everything lasting lives in
// the process-wide driver manager, settings and language configuration.
class BexRipEngineDriverUI_RipServer : public IRipEngineDriverUI
{
public:
    const wchar_t *kind() const override;
    void setLanguage(QLocale::Language language) override;
    bool showDriverManagerDlg(QWidget *parent, ICallback_DriverManagerDlg *callback) override;
    bool showDriverPropertyDlg(QWidget *parent, const RipExtraOption &option,
                               ICallback_DriverPropertyDlg *callback) override;
    QSharedPointer<IRipEngine::IDriver> getRipEngineDriver(const QSharedPointer<DriverInfo> &info) override;
    QByteArray serialize(const QSharedPointer<IRipEngine::IDriver> &driver) override;
    QSharedPointer<IRipEngine::IDriver> unserialize(const QByteArray &data) override;
};

// The driver information this module hands to hosts.
class DriverInfo_RipServer : public IRipEngineDriverUI::DriverInfo
{
public:
    const wchar_t *kind() const override;
};

// The driver object the RIP engine keeps with a job: the job's temporary .prs
// copy and the driver's mode id.
struct BexRipEngineDriver_RipServer : public IRipEngine::IDriver
{
    const wchar_t *kind() const override;
    // Deletes the file at prsFilePath; non-zero on success, 0 when it could
    // not be deleted (for instance because it does not exist).
    std::int32_t removePrsFile() override;

    std::wstring prsFilePath;
    std::int32_t modeId = -1;
};
