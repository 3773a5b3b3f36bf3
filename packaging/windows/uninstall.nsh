; What was installed goes; the user's settings, kept jobs and reports only when he says so.

Function un.onInit
  !insertmacro useOwnRegistry
  Call un.ReadCommandLine
  StrCpy $Mode "benutzer"
  ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    StrCpy $Mode "alle"
  ${EndIf}
  !insertmacro applyMode
  Call un.MayChangeSystem
  ${If} "$Mode $0" == "alle no"
  ${AndIf} ${Silent}
    StrCpy $ProblemCode ${NO_RIGHTS}
    StrCpy $Problem "${PRODUCT} ist für alle Benutzer eingerichtet. Entfernen kann es nur ein Administrator: bitte \
      mit „Als Administrator ausführen“ starten."
    Call un.Refuse
  ${EndIf}
FunctionEnd

Section "Uninstall"
  ; A copy of the messenger says goodbye in the hosts' folders, when the messenger itself is gone.
  InitPluginsDir
  StrCpy $3 $PLUGINSDIR
  CopyFiles /SILENT "$INSTDIR\KRVWinPrBote.exe" "$PLUGINSDIR\KRVWinPrBote.exe"
  ReadRegStr $OldHostKind SHCTX "${ENTRY}" "HostArt"
  ReadRegStr $OldHostFolder SHCTX "${ENTRY}" "HostOrdner"
  StrCpy $2 $INSTDIR
  Call un.WaitForProgram
  ${If} $OldHostKind == "WINDOWS"
    StrCpy $2 $OldHostFolder
    Call un.WaitForProgram
  ${EndIf}
  Call un.EndMessenger
  Call un.MayChangeSystem
  ${If} "$Mode $0" == "alle no"
    StrCpy $1 "/S /INNEN _?=$INSTDIR"
    Call un.RunAsAdministrator
    ${If} $0 != 0
      StrCpy $3 $INSTDIR
      Call un.BeginMessengerAgain
      SetErrorLevel ${NO_RIGHTS}
      Abort "Windows hat die Rechte eines Administrators nicht gegeben. Es bleibt alles, wie es war."
    ${EndIf}
  ${Else}
    Call un.RemoveHere
  ${EndIf}
  ${If} $Inner != yes
    Call un.LeaveEmulators
    ${If} $WithData == yes
      Call un.RemoveData
    ${EndIf}
  ${EndIf}
SectionEnd

; A form or a job of the program in the folder $2 is finished first.
Function un.WaitForProgram
  ${For} $0 1 20
; Opened for writing, with everything shared: what refuses that with a sharing violation is the running program
; itself.
    System::Call 'kernel32::CreateFileW(w "$2\KRVWinPr.exe", i 0x40000000, i 7, p 0, i 3, i 0, p 0) p.r1 ?e'
    Pop $4
    System::Call 'kernel32::CloseHandle(p r1)'
    ${If} $4 <> 32
      Return
    ${EndIf}
    ${If} ${Silent}
      Sleep 500
    ${Else}
      StrCpy $0 1
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$2\KRVWinPr.exe läuft noch. Bitte die Fenster des Programms \
        schließen." IDRETRY again
      SetErrorLevel 1
      Abort "Abgebrochen. Es bleibt alles, wie es war."
    again:
    ${EndIf}
  ${Next}
FunctionEnd

Function un.RemoveHere
  ${If} $OldHostKind == "WINDOWS"
  ${AndIf} $OldHostFolder != $INSTDIR
    StrCpy $2 "$INSTDIR\KRVWinPr.exe"
    Call un.LeaveWindowsHost
  ${EndIf}
  Call un.RemoveMenu
  StrCpy $2 1
  ${Do}
    StrCpy $0 $2
    Call un.FileAt
    ${If} $1 == ""
      ${Break}
    ${EndIf}
    StrCpy $0 "$1.alt"
    Call un.DeleteSoon
    StrCpy $0 $1
    Call un.DeleteSoon
    IntOp $2 $2 + 1
  ${Loop}
  Delete "$INSTDIR\TESTDRUC.OUT"  ; of the printer selection's test prints
  SetOutPath $TEMP
  RMDir $INSTDIR
  ${If} $INSTDIR == "$LOCALAPPDATA\Programs\${PRODUCT}"
    RMDir "$LOCALAPPDATA\Programs"
  ${EndIf}
  Call un.RemoveEntry
FunctionEnd

; Every folder that the user's messenger watches, the first one again and again.
Function un.LeaveEmulators
  StrCpy $3 $PLUGINSDIR
  StrCpy $1 "/AUS"
  Call un.TellMessenger
  StrCpy $2 ""
  ${Do}
    ReadRegStr $0 HKCU "${SETTINGS}\Bote" "Ordner1"
    ${If} $0 == $2
    ${OrIf} $0 == ""
      ${Break}
    ${EndIf}
    StrCpy $2 $0
    StrCpy $1 '/AUS "$2"'
    Call un.TellMessenger
  ${Loop}
FunctionEnd

Function un.RemoveData
  SetShellVarContext current
  DeleteRegKey HKCU "${SETTINGS}"
  DeleteRegKey /ifempty HKCU "Software\Velmora\${PRODUCT}"
  DeleteRegKey /ifempty HKCU "Software\Velmora"
  StrCpy $0 "$LOCALAPPDATA\${PRODUCT}"
  Delete "$0\Nicht gedruckt\*.*"
  RMDir "$0\Nicht gedruckt"
  Delete "$0\Testdruck\*.*"
  RMDir "$0\Testdruck"
  Delete "$0\KRVWinPr.ERR"
  RMDir $0
FunctionEnd
