; What is set up in the host's folder: KRVWinPr.exe itself for a host that runs under Windows, because hosts look for
; it there; for one in an emulator KRVWINPR.COM, by the messenger. Both of them in one folder would have Windows start
; the wrong one.

!define BOTH_TEXT "Windows startet dort immer die erste von beiden, und das ist für Korvano die falsche. Bitte einen \
  anderen Ordner wählen oder die Datei löschen."

Var LeftEmulator  ; yes: its folder is no longer watched, and is to be again where the installation fails

; In $Problem why this cannot be done with the host.
Function CheckHost
  StrCpy $Problem ""
  StrCpy $ProblemCode ${HOST_REFUSED}
  ${If} ${FileExists} "$INSTDIR\KRVWINPR.COM"
    StrCpy $Problem "In $INSTDIR liegt KRVWINPR.COM und käme mit KRVWinPr.exe zusammen. ${BOTH_TEXT}"
    Return
  ${EndIf}
  ${If} $HostKind == ""
    Return
  ${EndIf}
  StrCpy $0 $HostFolder
  GetFullPathName $HostFolder $HostFolder
  StrCpy $1 $HostFolder 1 -1
  StrLen $2 $HostFolder
  ${If} $1 == "\"
  ${AndIf} $2 > 3
    StrCpy $HostFolder $HostFolder -1
  ${EndIf}
  ${If} $HostFolder == ""
  ${OrIfNot} ${FileExists} "$HostFolder\*.*"
    StrCpy $HostFolder $0
    StrCpy $Problem "Den Ordner von Korvano gibt es nicht: $HostFolder"
  ${ElseIf} $HostKind == "WINDOWS"
    Call CheckWindowsHost
  ${Else}
    Call CheckEmulator
  ${EndIf}
FunctionEnd

Function CheckWindowsHost
  ${If} ${FileExists} "$HostFolder\KRVWINPR.COM"
  ${AndIfNot} "$OldHostKind $OldHostFolder" == "EMULATOR $HostFolder"
    StrCpy $Problem "In $HostFolder liegt KRVWINPR.COM für Korvano im DOS-Emulator und käme mit KRVWinPr.exe \
      zusammen. ${BOTH_TEXT}"
    Return
  ${EndIf}
  Call MayChangeSystem
  ${If} $Mode == "benutzer"
  ${OrIf} $0 == yes
    ClearErrors
    GetTempFileName $0 $HostFolder
    Delete $0
    ${If} ${Errors}
      StrCpy $Problem "In $HostFolder darf dieser Benutzer nichts schreiben. Bitte für alle Benutzer einrichten, \
        oder die Rechte des Ordners ändern."
    ${EndIf}
  ${EndIf}
FunctionEnd

Function CheckEmulator
  ${If} $HostFolder == $INSTDIR
    StrCpy $Problem "Das Programm und Korvano im DOS-Emulator brauchen zwei Ordner. ${BOTH_TEXT}"
    Return
  ${EndIf}
  ${If} ${FileExists} "$HostFolder\KRVWinPr.exe"
  ${AndIfNot} "$OldHostKind $OldHostFolder" == "WINDOWS $HostFolder"
    StrCpy $Problem "In $HostFolder liegt KRVWinPr.exe und käme mit KRVWINPR.COM für den DOS-Emulator zusammen. \
      ${BOTH_TEXT}"
    Return
  ${EndIf}
  Call HasRightsOfItsOwn
  ${If} $0 == yes
  ${AndIf} $Inner != yes
    StrCpy $ProblemCode ${NO_RIGHTS}
    StrCpy $Problem "Dieses Setup wurde als Administrator gestartet, und der Bote für den DOS-Emulator liefe mit \
      dessen Rechten. Bitte das Setup ohne „Als Administrator ausführen“ starten: es fragt selbst, wenn es Rechte \
      braucht. Oder den Ordner später einrichten, mit KRVWinPrBote /EIN Ordner."
  ${EndIf}
FunctionEnd

; Where User Account Control may show a host another folder than the real one: yes in $0.
Function IsProtectedFolder
  StrCpy $0 no
  ${If} ${AtLeastWinVista}
  ${AndIf} $HostKind != ""
    StrCpy $1 $PROGRAMFILES
    Call IsBelow
    StrCpy $1 $PROGRAMFILES64
    Call IsBelow
    StrCpy $1 $WINDIR
    Call IsBelow
    ReadEnvStr $1 "ProgramData"
    Call IsBelow
  ${EndIf}
FunctionEnd

Function IsBelow  ; the host's folder below $1
  StrLen $2 "$1\"
  StrCpy $2 "$HostFolder\" $2
  ${If} $2 == "$1\"
    StrCpy $0 yes
  ${EndIf}
FunctionEnd

; Before the files are replaced, with the messenger that knows the folder.
Function LeaveEmulator
  ${If} $Inner == yes
  ${OrIf} $OldHostKind != "EMULATOR"
  ${OrIf} "EMULATOR $OldHostFolder" == "$HostKind $HostFolder"
    Return
  ${EndIf}
  StrCpy $1 '/AUS "$OldHostFolder"'
  Call TellMessenger
  StrCpy $LeftEmulator yes
FunctionEnd

Function EnterEmulator
  ${If} $Inner == yes
  ${OrIf} $HostKind != "EMULATOR"
    Return
  ${EndIf}
  DetailPrint "Der Bote wird eingerichtet."
  StrCpy $1 '/EIN "$HostFolder"'
  Call TellMessenger
  ${If} $0 == 0
    StrCpy $MessengerRan ""
    Return
  ${EndIf}
  StrCpy $Problem "${PRODUCT} ist eingerichtet, aber nicht der Bote für den DOS-Emulator:$\r$\n$1"
  Call Say
  SetErrorLevel ${HOST_REFUSED}
FunctionEnd

; Takes the program out of a host's folder where it is this one ($2, as it was installed), and puts back what was
; there before.
!macro leaveWindowsHost un
Function ${un}LeaveWindowsHost
  StrCpy $0 "$OldHostFolder\KRVWinPr.exe"
  StrCpy $1 $2
  Call ${un}SameContent
  ${If} $0 == yes
    StrCpy $0 "$OldHostFolder\KRVWinPr.exe"
    Call ${un}DeleteSoon
    Rename "$0.vorher" $0
  ${EndIf}
  Delete "$OldHostFolder\KRVWinPr.exe.alt"
FunctionEnd
!macroend
!insertmacro leaveWindowsHost ""
!insertmacro leaveWindowsHost "un."

; While the old program ($INSTDIR\KRVWinPr.exe.alt) is still there to compare with.
Function EnterWindowsHost
  StrCpy $2 "$INSTDIR\KRVWinPr.exe.alt"
  ${If} $OldHostKind == "WINDOWS"
  ${AndIfNot} "$OldHostKind $OldHostFolder" == "$HostKind $HostFolder"
  ${AndIf} $OldHostFolder != $INSTDIR
    Call LeaveWindowsHost
  ${EndIf}
  ${If} $HostKind != "WINDOWS"
  ${OrIf} $HostFolder == $INSTDIR
    Return
  ${EndIf}
  StrCpy $0 "$HostFolder\KRVWinPr.exe"
  ${If} ${FileExists} $0
  ${AndIfNot} "$OldHostKind $OldHostFolder" == "$HostKind $HostFolder"
  ${AndIfNot} ${FileExists} "$0.vorher"
    StrCpy $1 "$INSTDIR\KRVWinPr.exe"
    Call SameContent
    ${If} $0 != yes
      CopyFiles /SILENT "$HostFolder\KRVWinPr.exe" "$HostFolder\KRVWinPr.exe.vorher"
    ${EndIf}
  ${EndIf}
  ClearErrors
  CopyFiles /SILENT "$INSTDIR\KRVWinPr.exe" "$HostFolder\KRVWinPr.exe.neu"
  StrCpy $1 "$HostFolder\KRVWinPr.exe"
  ${IfNot} ${Errors}
    Call Replace
  ${Else}
    SetErrors
  ${EndIf}
  ${If} ${Errors}
    Delete "$1.neu"
    StrCpy $Problem "${PRODUCT} ist eingerichtet, aber $1 lässt sich nicht schreiben. Bitte Programme schließen, die \
      diese Datei benutzen, und das Setup noch einmal starten."
    Call Say
    SetErrorLevel ${HOST_REFUSED}
  ${EndIf}
  StrCpy $0 "$1.alt"
  Call DeleteSoon
FunctionEnd
