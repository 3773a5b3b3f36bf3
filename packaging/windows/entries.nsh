; The start menu and the list of installed programs.

!define MENU "$SMPROGRAMS\${PRODUCT}"
!define EVENT_SOURCE "SYSTEM\CurrentControlSet\Services\EventLog\Application\KRVWinPrBote"

Function WriteMenu
  CreateDirectory "${MENU}"
  ; Shortcuts start in the folder that is the output folder now. The printer selection leaves the host its answer there.
  ${If} $HostKind != ""
    SetOutPath $HostFolder
  ${EndIf}
  CreateShortcut "${MENU}\Druckerauswahl.lnk" "$INSTDIR\KRVWinPr.exe" "/DRUCKERAUSWAHL" "" "" "" "" \
    "Drucker für Korvano wählen, mit Rändern und Schächten"
  CreateShortcut "${MENU}\Vorschau.lnk" "$INSTDIR\KRVWinPr.exe" "/VORSCHAU" "" "" "" "" \
    "Eine Druckdatei ansehen, wie sie gedruckt wird"
  CreateShortcut "${MENU}\Druckaufträge.lnk" "$INSTDIR\KRVWinPr.exe" "/AUFTRAEGE" "" "" "" "" \
    "Was in der Warteschlange steht, und was nicht gedruckt wurde"
  SetOutPath $INSTDIR
  ${If} $HostKind == ""
    StrCpy $2 "${MENU}\Druckerauswahl.lnk"
    Call StartInTemp
  ${EndIf}
  CreateShortcut "${MENU}\Handbuch.lnk" "$INSTDIR\KRVWinPr-Handbuch.html"
  CreateShortcut "${MENU}\${PRODUCT} deinstallieren.lnk" "$INSTDIR\${UNINSTALLER}"
FunctionEnd

; Where there is no host to answer, the shortcut $2 starts in a folder that every user may write into.
Function StartInTemp
  !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
  ${If} $0 P<> 0
    ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}", .r1)'
    ${If} $1 P<> 0
      ${IPersistFile::Load} $1 '("$2", ${STGM_READWRITE})'
      ${IShellLink::SetWorkingDirectory} $0 '("%TEMP%")'
      ${IPersistFile::Save} $1 '("$2", 1)'
      ${IUnknown::Release} $1 ""
    ${EndIf}
    ${IUnknown::Release} $0 ""
  ${EndIf}
FunctionEnd

Function un.RemoveMenu
  Delete "${MENU}\Druckerauswahl.lnk"
  Delete "${MENU}\Vorschau.lnk"
  Delete "${MENU}\Druckaufträge.lnk"
  Delete "${MENU}\Handbuch.lnk"
  Delete "${MENU}\${PRODUCT} deinstallieren.lnk"
  RMDir "${MENU}"
FunctionEnd

Function WriteEntry
  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\KRVWinPr.exe"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "${PUBLISHER}"
  WriteRegStr SHCTX "${ENTRY}" "Comments" "Druckertreiber für Korvano"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
  ${GetTime} "" "L" $0 $1 $2 $3 $4 $5 $6
  WriteRegStr SHCTX "${ENTRY}" "InstallDate" "$2$1$0"
  ${GetSize} "$INSTDIR" "/S=0K /G=0" $0 $1 $2
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" $0
  WriteRegStr SHCTX "${ENTRY}" "HostArt" $HostKind
  WriteRegStr SHCTX "${ENTRY}" "HostOrdner" $HostFolder
  ${If} $Mode == "alle"
    WriteRegStr HKLM "${EVENT_SOURCE}" "EventMessageFile" "$INSTDIR\KRVWinPrBote.exe"
  ${EndIf}
FunctionEnd

Function un.RemoveEntry
  DeleteRegKey SHCTX "${ENTRY}"
  ReadRegStr $0 HKLM "${EVENT_SOURCE}" "EventMessageFile"
  ${If} $0 == "$INSTDIR\KRVWinPrBote.exe"
    DeleteRegKey HKLM "${EVENT_SOURCE}"
  ${EndIf}
FunctionEnd
