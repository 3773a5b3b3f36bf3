; The installer: the programs for 64 and for 32 bits in one, for one user without administrator rights or for all.
; packaging/make_windows.sh gives VERSION, STUB (which of makensis's stubs), FILES (the folder with what is packed),
; SIZE (of what is installed, in KB), ICON, PICTURE and OUTPUT.
!define PRODUCT "KRVWinPr"
!define PUBLISHER "Velmora"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define SETTINGS "Software\Velmora\${PRODUCT}\3.0"
!define UNINSTALLER "Deinstallieren.exe"

Target ${STUB}
Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
; Rights are asked for when somebody chooses what needs them.
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS all
SetCompressor /SOLID lzma
ShowInstDetails hide
ShowUninstDetails hide

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_WELCOMEFINISHPAGE_BITMAP_STRETCH AspectFitHeight
!define MUI_ABORTWARNING

!include MUI2.nsh
!include LogicLib.nsh
!include nsDialogs.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include WinVer.nsh
!include x64.nsh
!include Win/COM.nsh

!include state.nsh
!include saying.nsh
!include command_line.nsh
!include rights.nsh
!include files.nsh
!include messenger.nsh
!include host.nsh
!include entries.nsh
!include wizard.nsh
!include install.nsh
!include uninstall.nsh

!insertmacro MUI_LANGUAGE "German"

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_GERMAN} "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=${LANG_GERMAN} "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_GERMAN} "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_GERMAN} "FileDescription" "Installation des Druckertreibers für Korvano"
VIAddVersionKey /LANG=${LANG_GERMAN} "CompanyName" "${PUBLISHER}"
VIAddVersionKey /LANG=${LANG_GERMAN} "LegalCopyright" "Copyright (c) 2026 The KRVWinPr developers"
