# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Which tests guard which source: for every source under src those that notice a change of it, the quickest first.

A test is named as ctest names it; "units/" and the like may be left out where a test is a program of its own. The
sources in the macOS folders have no guards here: what runs of them runs on stand-ins (docs/testing.md).
"""

_CLIENT = "HttpSessionTest HttpSessionLifetimeTest ProxyTest Http2Test TransferLimitsTest"
_FILE = "PreferencesTest PreferenceLockTest StoredValuesTest"
_BUS_MENU = "StatusMenuTest HostileCallsTest"
_ITEM = "StatusItemTest StatusHostTest InstalledIconTest"
_GUIDE = "SetupGuideViewTest GuideLooksTest SmallScreenTest"
_FORM = "SettingsViewTest CredentialFieldsTest ConnectionResultTest"

GUARDS = {
    "App/VanteloApp.cpp": "VanteloAppTest LastWindowTest endtoend/program endtoend/quit endtoend/quiet endtoend/secrets",
    "App/main.cpp": "endtoend/program",

    "Views/MenuBarView.cpp": "MenuBarViewTest MenuCommandsTest",
    "Views/SettingsView.cpp": f"{_FORM} StoredValuesTest SettingsLooksTest SmallScreenTest WindowManagerTest views/ScreenReaderTest",
    "Views/SetupGuideText.cpp": "SetupGuideViewTest",
    "Views/SetupGuideView.cpp": f"{_GUIDE} WindowManagerTest views/ScreenReaderTest",
    "Views/WindowManager.cpp": "WindowManagerTest WorkspaceTest LastWindowTest",

    "State/AppState.cpp": "StalenessTest AppStateTest MenuBarViewTest RefreshTest MenuCommandsTest",

    "API/Figures.cpp": "FiguresTest",
    "API/FormatNumber.cpp": "FormatNumberTest",
    "API/InsightsResponse.cpp": "InsightsResponseTest",
    "API/MetaAPI.cpp": "MetaAPITest",
    "API/MetaAPIError.cpp": "MetaAPIErrorTest",

    "Update/RemoteUpdate.cpp": "RemoteUpdateTest",
    "Update/UpdateManager.cpp": "VersionComparisonTest UpdateManagerTest",

    "Controls/AccessibleRole.cpp": "ResultRowTest SetupGuideViewTest views/ScreenReaderTest",
    "Controls/Boxes/Divider.cpp": f"{_GUIDE} views/ScreenReaderTest",
    "Controls/Boxes/RoundedBox.cpp": f"{_GUIDE} SettingsLooksTest",
    "Controls/Boxes/TitledBox.cpp": f"SettingsLooksTest {_FORM} views/ScreenReaderTest",
    "Controls/Fields/ProgressButton.cpp": "ConnectionResultTest SettingsViewTest SettingsLooksTest",
    "Controls/Fields/Stepper.cpp": "StepperTest SettingsViewTest views/ScreenReaderTest",
    "Controls/Fields/StoredText.cpp": "StoredValuesTest CredentialFieldsTest",
    "Controls/Fields/TokenField.cpp": "CredentialFieldsTest SettingsViewTest views/ScreenReaderTest",
    "Controls/Labels/CodeBlock.cpp": "CopiedCommandTest FixedFontTest SetupGuideViewTest GuideLooksTest views/ScreenReaderTest",
    "Controls/Labels/EmojiLabel.cpp": f"{_GUIDE} views/ScreenReaderTest",
    "Controls/Labels/LinkLabel.cpp": f"{_GUIDE} AppearanceTest WindowManagerTest views/ScreenReaderTest",
    "Controls/Labels/MarkedLabel.cpp": f"{_GUIDE} views/ScreenReaderTest",
    "Controls/Labels/ResultRow.cpp": "ResultRowTest ConnectionResultTest SettingsViewTest SettingsLooksTest views/ScreenReaderTest",
    "Controls/Labels/TextLabel.cpp": f"AppearanceTest {_GUIDE} SettingsViewTest SettingsLooksTest FixedFontTest",
    "Controls/Windows/Alert.cpp": "AlertTest UpdateManagerTest",
    "Controls/Windows/AlertBox.cpp": "AlertTest UpdateManagerTest",
    "Controls/Windows/HostingWindow.cpp": "WindowManagerTest SmallScreenTest ShrinkingScreenTest SettingsViewTest "
                                          "SetupGuideViewTest WorkspaceTest LastWindowTest",
    "Controls/Windows/ScreenRoom.cpp": "SmallScreenTest AlertTest ShrinkingScreenTest WorkspaceTest",

    "MenuBar/MenuBarExtra.cpp": f"VanteloAppTest StatusItemTest {_BUS_MENU} RowsMenuTest",
    "MenuBar/ShownRows.cpp": "ShownRowsTest",
    "MenuBar/Linux/BusMenu/BusText.cpp": f"{_BUS_MENU} StatusItemTest",
    "MenuBar/Linux/BusMenu/DBusMenu.cpp": _BUS_MENU,
    "MenuBar/Linux/BusMenu/DBusMenuAdaptor.cpp": _BUS_MENU,
    "MenuBar/Linux/BusMenu/DBusMenuItemIds.cpp": _BUS_MENU,
    "MenuBar/Linux/BusMenu/DBusMenuTypes.cpp": _BUS_MENU,
    "MenuBar/Linux/MenuBarExtra.cpp": "StatusItemTest StatusMenuTest NoSessionBusTest TrayMenuBarExtraTest StatusHostTest",
    "MenuBar/Linux/StatusItem/InstalledIcon.cpp": "InstalledIconTest",
    "MenuBar/Linux/StatusItem/StatusDotImage.cpp": "StatusDotImageTest StatusItemTest",
    "MenuBar/Linux/StatusItem/StatusNotifierHost.cpp": f"{_ITEM} TrayMenuBarExtraTest",
    "MenuBar/Linux/StatusItem/StatusNotifierItem.cpp": f"{_ITEM} HostileCallsTest",
    "MenuBar/Linux/StatusItem/StatusNotifierItemAdaptor.cpp": f"{_ITEM} HostileCallsTest",
    "MenuBar/Linux/StatusItem/StatusNotifierRegistration.cpp": f"{_ITEM} TrayMenuBarExtraTest",
    "MenuBar/Linux/StatusItem/StatusNotifierTypes.cpp": _ITEM,
    "MenuBar/Linux/Tray/RowsMenu.cpp": "RowsMenuTest TrayMenuBarExtraTest StatusItemTest",
    "MenuBar/Linux/Tray/TrayMenuBarExtra.cpp": "TrayMenuBarExtraTest",

    "Http/Connections.cpp": f"InheritedSocketsTest {_CLIENT} SleepTest",
    "Http/FailureText.cpp": "HttpSessionTest Http2Test ProxyTest endtoend/transfers",
    "Http/HttpSession.cpp": f"{_CLIENT} SleepTest endtoend/transfers",
    "Http/ProxyDirectory.cpp": "ProxyTest endtoend/transfers",
    "Http/Transfer.cpp": f"{_CLIENT} SleepTest endtoend/transfers",
    "Http/Linux/InheritedSockets.cpp": "InheritedSocketsTest",
    "Http/Linux/SystemProxy.cpp": "endtoend/transfers",

    "Preferences/AppStorage.cpp": "StoredKindsTest PreferencesTest",
    "Preferences/DefaultsStore.cpp": _FILE,
    "Preferences/Linux/FileLock.cpp": "PreferenceLockTest endtoend/preferences",
    "Preferences/Linux/PreferenceFile.cpp": _FILE,
    "Preferences/Linux/PreferenceFormat.cpp": "PreferenceFormatTest PreferencesTest",
    "Preferences/Linux/PreferenceStorage.cpp": "PreferencesTest StoredValuesTest",
    "Preferences/Linux/PreferenceWatch.cpp": "PreferencesTest StoredValuesTest endtoend/preferences",
    "Preferences/Linux/PrivateFile.cpp": "PreferencesTest PreferenceLockTest endtoend/preferences",

    "Look/TextStyle.cpp": "AppearanceTest FixedFontTest GuideLooksTest SettingsLooksTest",
    "Look/Theme.cpp": "AppearanceTest ResultRowTest GuideLooksTest SettingsLooksTest",
    "Look/Linux/ColourPreference.cpp": "DarkPortalTest DarkGnomeTest",
    "Look/Linux/DarkPalette.cpp": "DarkPortalTest DarkGnomeTest AppearanceTest",
    "Look/Linux/DesktopColours.cpp": "DarkPortalTest DarkGnomeTest",
    "Look/Linux/SystemSymbol.cpp": "AppearanceTest ResultRowTest GuideLooksTest SettingsLooksTest",
    "Look/Linux/TextScale.cpp": "AppearanceTest GuideLooksTest SettingsLooksTest",

    "Process/TerminationSignals.cpp": "TerminationSignalsTest endtoend/quit endtoend/secrets",
    "Process/Linux/Activation.cpp": "WindowManagerTest WorkspaceTest endtoend/program endtoend/quit",
    "Process/Linux/ActivationToken.cpp": "SingleInstanceTest StatusItemTest endtoend/program",
    "Process/Linux/ApplicationService.cpp": "SingleInstanceTest",
    "Process/Linux/PrivateBus.cpp": "SingleInstanceTest StatusItemTest endtoend/program",
    "Process/Linux/SingleInstance.cpp": "SingleInstanceTest endtoend/program",

    "Machine/LocalAddresses.cpp": "endtoend/sleep",
    "Machine/NetworkWatch.cpp": "SleepTest endtoend/sleep",
    "Machine/PollTimer.cpp": "SleepTest",
    "Machine/Linux/LocalNetwork.cpp": "endtoend/sleep",
    "Machine/Linux/MachineAlarm.cpp": "endtoend/sleep endtoend/interval endtoend/quiet",
    "Machine/Linux/MachineTime.cpp": "endtoend/sleep endtoend/program endtoend/interval",
    "Machine/Linux/NetworkManagerWatch.cpp": "endtoend/sleep",

    "Foundation/Deployment.cpp": "ProductTest SetupGuideViewTest",
    "Foundation/JsonReader.cpp": "JsonReaderTest",
    "Foundation/Log.cpp": "LogTest",
    "Foundation/PlainNumber.cpp": "PlainNumberTest FiguresTest VersionComparisonTest",
    "Foundation/SystemClock.cpp": "ProductTest",
    "Foundation/Task.cpp": "VanteloAppTest RefreshTest AlertTest HttpSessionTest",
}
GUARDS = {f"src/{source}": tests.split() for source, tests in GUARDS.items()}

# What a test starts beside itself, and is of the program too.
COMPANIONS = {"SingleInstanceTest": ["tests/instance_probe"]}


def sources(root):
    """Every source that the product is made of on this system, as git names it."""
    return sorted(str(path.relative_to(root)) for path in (root / "src").rglob("*.cpp") if "macOS" not in path.parts)
