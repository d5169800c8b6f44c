// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/MenuBarExtra.h"

#include "Look/macOS/NativeText.h"
#import "MenuBar/macOS/StatusMenu.h"

#include <utility>

namespace {

class StatusItemExtra : public MenuBarExtra {
public:
    StatusItemExtra()
    {
        m_item.autosaveName = @"vantelo"; // the place that the user gives it is kept under this name
        m_item.menu = m_menu.menu;
        const CGFloat size = [NSFont menuBarFontOfSize:0].pointSize;
        m_item.button.font = [NSFont monospacedDigitSystemFontOfSize:size weight:NSFontWeightRegular];
    }

    ~StatusItemExtra() override
    {
        [NSStatusBar.systemStatusBar removeStatusItem:m_item];
        [NSProcessInfo.processInfo endActivity:m_activity];
    }

    void setLabel(const MenuBarLabel &label) override
    {
        if (label == std::exchange(m_label, label))
            return;
        m_item.button.title = nativeText(label.whole());
        m_item.button.accessibilityTitle = nativeText(label.accessibleDescription);
    }

    void setRows(const MenuRows &rows) override { [m_menu setRows:rows]; }

    void closeMenu() override { [m_menu.menu cancelTracking]; }

private:
    NSStatusItem *const m_item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
    StatusMenu *const m_menu = [[StatusMenu alloc] init];
    // As long as the item tells what is so now, the system must not put the polls off.
    id<NSObject> const m_activity =
        [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                     reason:@"Watching an ad account"];
    MenuBarLabel m_label;
};

} // namespace

std::unique_ptr<MenuBarExtra> MenuBarExtra::create() { return std::make_unique<StatusItemExtra>(); }
