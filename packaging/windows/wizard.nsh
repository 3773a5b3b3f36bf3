; The pages, one behind the other.

!define MUI_WELCOMEPAGE_TEXT "${PRODUCT} druckt, was Korvano schreibt, auf jedem Drucker dieses \
  Rechners.$\r$\n$\r$\nDas Setup richtet das Programm ein und bringt es mit Korvano zusammen. Korvano und andere \
  Programme können dabei weiterlaufen.$\r$\n$\r$\nKlicken Sie auf Weiter, um fortzufahren."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${FILES}/LIZENZ.txt"
Page custom WhoPage WhoLeave
!define MUI_PAGE_CUSTOMFUNCTION_PRE FolderPage
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE FolderLeave
!insertmacro MUI_PAGE_DIRECTORY
Page custom HostPage HostLeave
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Drucker für Korvano wählen"
!define MUI_FINISHPAGE_RUN_FUNCTION OpenSelection
!define MUI_FINISHPAGE_SHOWREADME
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Handbuch öffnen"
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION OpenHandbook
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.AskPage un.AskLeave
!insertmacro MUI_UNPAGE_INSTFILES

Var First   ; of the page's choices, from its top
Var Second
Var Third
Var Path
Var Browse

Function WhoPage
  !insertmacro MUI_HEADER_TEXT "Für wen?" "${PRODUCT} für einen oder für alle Benutzer dieses Rechners einrichten."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 4u 100% 12u "&Nur für mich"
  Pop $First
  ${NSD_CreateLabel} 12u 17u 95% 18u "Ohne Administratorrechte, in den eigenen Ordner."
  Pop $0
  ${NSD_CreateRadioButton} 0 42u 100% 12u "Für &alle Benutzer dieses Rechners"
  Pop $Second
  ${NSD_CreateLabel} 12u 55u 95% 18u "Windows fragt vor dem Installieren nach einem Administrator."
  Pop $0
  ${If} $OldVersion != ""
    ${NSD_CreateLabel} 0 88u 100% 26u "Hier ist schon ${PRODUCT} $OldVersion eingerichtet und wird jetzt durch \
      ${VERSION} ersetzt. Alle Einstellungen bleiben."
    Pop $0
    EnableWindow $First 0
    EnableWindow $Second 0
  ${EndIf}
  ${If} $Mode == "alle"
    ${NSD_Check} $Second
    ${NSD_SetFocus} $Second
  ${Else}
    ${NSD_Check} $First
    ${NSD_SetFocus} $First
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function WhoLeave
  ${NSD_GetState} $Second $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $0 "alle"
  ${Else}
    StrCpy $0 "benutzer"
  ${EndIf}
  ${If} $0 != $Mode
    StrCpy $Mode $0
    Call TakeMode
  ${EndIf}
  Call CheckMode
  ${If} $ProblemCode = ${NEWER_THERE}
  ${AndIf} $Problem != ""
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$Problem$\r$\n$\r$\nTrotzdem ${VERSION} einrichten?" IDYES goOn
    Abort
  goOn:
    StrCpy $MayGoBack yes
  ${ElseIf} $Problem != ""
    Call Say
    Abort
  ${EndIf}
FunctionEnd

Function FolderPage
  ${If} $OldFolder != ""
    Abort
  ${EndIf}
FunctionEnd

Function FolderLeave
  ${If} ${FileExists} "$INSTDIR\KRVWINPR.COM"
    Call CheckHost
    Call Say
    Abort
  ${EndIf}
FunctionEnd

Function HostPage
  !insertmacro MUI_HEADER_TEXT "Wo läuft Korvano?" "Korvano findet den Druckertreiber in seinem eigenen Ordner."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 0 100% 12u "Unmittelbar &unter Windows"
  Pop $First
  ${NSD_CreateLabel} 12u 12u 95% 10u "KRVWinPr.exe kommt auch in den Ordner von Korvano."
  Pop $0
  ${NSD_CreateRadioButton} 0 28u 100% 12u "In einem DOS-&Emulator (dosbox und andere)"
  Pop $Second
  ${NSD_CreateLabel} 12u 40u 95% 18u "KRVWINPR.COM kommt in den Ordner, und der Bote, der außerhalb druckt, startet \
    ab jetzt mit der Anmeldung."
  Pop $0
  ${NSD_CreateRadioButton} 0 64u 100% 12u "Das richte ich &später ein"
  Pop $Third
  ${NSD_CreateLabel} 0 90u 100% 10u "Der &Ordner, in dem Korvano arbeitet:"
  Pop $0
  ${NSD_CreateDirRequest} 0 102u 76% 13u $HostFolder
  Pop $Path
  ${NSD_CreateBrowseButton} 78% 101u 22% 15u "&Durchsuchen..."
  Pop $Browse
  ${NSD_OnClick} $First ShowHostChoice
  ${NSD_OnClick} $Second ShowHostChoice
  ${NSD_OnClick} $Third ShowHostChoice
  ${NSD_OnClick} $Browse BrowseForHost
  ${If} $HostKind == "EMULATOR"
    ${NSD_Check} $Second
  ${ElseIf} $HostKind == "WINDOWS"
  ${OrIf} $OldVersion == ""
    ${NSD_Check} $First
  ${Else}
    ${NSD_Check} $Third
  ${EndIf}
  Push $Third
  Call ShowHostChoice
  ${NSD_SetFocus} $Path
  nsDialogs::Show
FunctionEnd

Function ShowHostChoice
  Pop $0
  ${NSD_GetState} $Third $0
  IntOp $0 $0 ^ 1
  EnableWindow $Path $0
  EnableWindow $Browse $0
FunctionEnd

Function BrowseForHost
  Pop $0
  ${NSD_GetText} $Path $0
  nsDialogs::SelectFolderDialog "Der Ordner, in dem Korvano arbeitet" $0
  Pop $0
  ${If} $0 != error
    ${NSD_SetText} $Path $0
  ${EndIf}
FunctionEnd

Function HostLeave
  StrCpy $HostKind ""
  StrCpy $HostFolder ""
  ${NSD_GetState} $Third $0
  ${If} $0 != ${BST_CHECKED}
    StrCpy $HostKind "EMULATOR"
    ${NSD_GetState} $First $0
    ${If} $0 == ${BST_CHECKED}
      StrCpy $HostKind "WINDOWS"
    ${EndIf}
    ${NSD_GetText} $Path $HostFolder
  ${EndIf}
  ${If} $HostKind != ""
  ${AndIf} $HostFolder == ""
    StrCpy $Problem "Bitte den Ordner nennen, in dem Korvano arbeitet, oder „später“ wählen."
  ${Else}
    Call CheckHost
  ${EndIf}
  ${If} $Problem != ""
    Call Say
    Abort
  ${EndIf}
  Call IsProtectedFolder
  ${If} $0 == yes
    MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "Windows schützt $HostFolder: Was Korvano dort schreibt, \
      legt es vielleicht an einer anderen Stelle ab (VirtualStore), und der Druckertreiber findet es nicht. Besser \
      liegt Korvano in einem Ordner wie C:\Korvano.$\r$\n$\r$\nTrotzdem diesen Ordner nehmen?" IDYES goOn
    Abort
  goOn:
  ${EndIf}
FunctionEnd

Function OpenSelection
  SetOutPath $TEMP
  ${If} $HostKind != ""
    SetOutPath $HostFolder
  ${EndIf}
  Exec '"$INSTDIR\KRVWinPr.exe" /DRUCKERAUSWAHL'
FunctionEnd

Function OpenHandbook
  ExecShell "open" "$INSTDIR\KRVWinPr-Handbuch.html"
FunctionEnd

Function un.AskPage
  !insertmacro MUI_HEADER_TEXT "${PRODUCT} deinstallieren" "Das Programm wird von diesem Rechner entfernt."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 30u "Entfernt wird alles, was das Setup eingerichtet hat: in $INSTDIR, im Startmenü \
    und in den Ordnern von Korvano. Der Bote für den DOS-Emulator wird beendet."
  Pop $0
  ${NSD_CreateCheckBox} 0 44u 100% 12u "&Auch meine Einstellungen und Aufträge löschen"
  Pop $First
  ${NSD_CreateLabel} 12u 57u 95% 28u "Das sind die Einstellungen der Drucker, die aufgehobenen Aufträge im Ordner \
    „Nicht gedruckt“ und die Fehlerberichte. Sie lassen sich nicht wiederherstellen."
  Pop $0
  nsDialogs::Show
FunctionEnd

Function un.AskLeave
  ${NSD_GetState} $First $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $WithData yes
  ${EndIf}
FunctionEnd
