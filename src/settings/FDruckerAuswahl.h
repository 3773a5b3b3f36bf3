// The printer selection: which printer the host's reports go to and, for each printer, margins, line spacing, scale of
// graphics, and the paper bins of the host's trays.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"
#include "session/session.h"
#include "settings/test_prints.h"
#include "settings/tray_discovery.h"

namespace settings {

// Every edit is stored at once; OK only records the chosen printer in the selection file.
class FDruckerAuswahl final : public platform::FormEvents {
public:
    // The session must outlive it, and test prints are handed to the function.
    FDruckerAuswahl(session::Session& session, RunReport runReport);

    // Shows the form and does not wait. runtime::Error where there is no desktop.
    void Show();

    void clicked(const std::string& control) override;
    void doubleClicked(const std::string& control) override;
    void changed(const std::string& control) override;
    void focused(const std::string& control) override;
    bool accepts(const std::string& control, const std::string& text, char32_t character) override;
    void closed() override;

private:
    static constexpr std::size_t trayCount = 3;

    void Form_Load();
    std::vector<std::string> printersToShow(const std::string& remembered);
    void fillPrinterList(const std::string& remembered);
    void preselect(std::string remembered);
    void List1_Click();
    void fillTrayLists();
    void selectStoredBins();
    void showTrayList(std::size_t tray);
    void showSettings();
    void storeText(const std::string& control, std::string_view byDefault);
    void storeTray(std::size_t tray);
    void cmdOK_Click();
    void cmdAbbruch_Click();
    void cmdDruckerordner_Click();
    void cmdErweitert_Click();
    void cmdStandardwerte_Click();
    void DoTestdruck();
    void DoSchachtTest();
    void DoGrafikTest();
    void test(const std::string& button, std::string_view question, const std::function<void()>& print);
    // To be called while a test prints: keeps the form painted, and tells a user who waits that it goes on.
    std::function<void()> progress();

    std::string printer() const;
    std::string printerKey() const;
    std::string defaultOf(const std::string& control) const;
    void store(std::string_view name, const std::string& text, std::string_view byDefault);

    session::Session& session_;
    RunReport runReport_;
    TrayDiscovery trays_;
    TestPrints testPrints_;
    std::unique_ptr<platform::Form> form_;
    std::vector<std::string> printers_;
    std::string trouble_;  // why there are not more; may be empty
    std::array<BinList, trayCount> binLists_;
    bool loading_ = false;
    bool expanded_ = false;
    bool busy_ = false;
};

}  // namespace settings
