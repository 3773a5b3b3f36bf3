; The command line, word by word, so that nothing misspelt is taken for something else. /S and /D= (or _?=) are
; makensis's own.

Var Words
Var Word

!macro commandLine un
; The next one in $Word, empty at the end: quotes hold blanks together and vanish.
Function ${un}NextWord
  Push $0
  Push $1
  StrCpy $Word ""
  StrCpy $1 0
  ${Do}
    StrCpy $0 $Words 1
    StrCpy $Words $Words "" 1
    ${If} $0 == '"'
      IntOp $1 $1 ^ 1
    ${ElseIf} $0 == " "
    ${AndIf} $1 = 0
      ${If} $Word != ""
        ${ExitDo}
      ${EndIf}
    ${Else}
      StrCpy $Word $Word$0
    ${EndIf}
  ${LoopUntil} $0 == ""
  Pop $1
  Pop $0
FunctionEnd
!macroend

!insertmacro commandLine ""
!insertmacro commandLine "un."

Function TakeHost  ; a kind in $1; where $Word is /KIND=folder
  StrLen $2 "/$1="
  StrCpy $0 $Word $2
  ${If} $0 == "/$1="
    StrCpy $HostKind $1
    StrCpy $HostFolder $Word "" $2
    StrCpy $WishedHost yes
    StrCpy $Word ""
  ${EndIf}
FunctionEnd

Function ReadCommandLine
  ${GetParameters} $Words
  ${Do}
    Call NextWord
    StrCpy $0 $Word 3
    ${If} $Word == ""
    ${OrIf} $0 S== "/D="
      ${Break}
    ${EndIf}
    StrCpy $1 "WINDOWS"
    Call TakeHost
    StrCpy $1 "EMULATOR"
    Call TakeHost
    ${Select} $Word
      ${Case3} "" "/S" "/NCRC"
      ${Case} "/ALLE"
        StrCpy $WishedMode "alle"
      ${Case} "/BENUTZER"
        StrCpy $WishedMode "benutzer"
      ${Case} "/OHNEHOST"
        StrCpy $HostKind ""
        StrCpy $HostFolder ""
        StrCpy $WishedHost yes
      ${Case} "/DOWNGRADE"
        StrCpy $MayGoBack yes
      ${Case} "/INNEN"
        StrCpy $Inner yes
      ${CaseElse}
        Call Usage
    ${EndSelect}
  ${Loop}
FunctionEnd

Function Usage
  StrCpy $ProblemCode 0
  StrCpy $Problem ""
  ${If} $Word != "/?"
    StrCpy $ProblemCode ${WRONG_CALL}
    StrCpy $Problem "$Word ist hier nichts, was das Setup kennt.$\r$\n$\r$\n"
  ${EndIf}
  StrCpy $Problem "$Problem${PRODUCT} ${VERSION} einrichten$\r$\n$\r$\n\
    /S  ohne Fragen und Fenster$\r$\n\
    /BENUTZER  nur für diesen Benutzer (das gilt ohne Angabe)$\r$\n\
    /ALLE  für alle Benutzer, mit Administratorrechten$\r$\n\
    /WINDOWS=Ordner  Korvano läuft unmittelbar unter Windows, in diesem Ordner$\r$\n\
    /EMULATOR=Ordner  Korvano läuft in einem DOS-Emulator, mit diesem Ordner$\r$\n\
    /OHNEHOST  in keinem Ordner von Korvano etwas einrichten$\r$\n\
    /DOWNGRADE  auch anstelle einer neueren Version$\r$\n\
    /D=Ordner  für das Programm; als letztes, ohne Anführungszeichen$\r$\n$\r$\n\
    Deinstallieren.exe: /S ohne Fragen, /ALLES auch Einstellungen und aufgehobene Aufträge$\r$\n$\r$\n\
    Ergebnis: 0 eingerichtet, 1 abgebrochen, 2 Dateien nicht schreibbar, 3 falscher Aufruf, 4 Rechte fehlen, \
    5 Ordner von Korvano, 6 neuere Version vorhanden, 7 Windows zu alt"
  Call Refuse
FunctionEnd

Function un.ReadCommandLine
  ${GetParameters} $Words
  ${Do}
    Call un.NextWord
    StrCpy $0 $Word 3
    ${If} $Word == ""
    ${OrIf} $0 S== "_?="
      ${Break}
    ${EndIf}
    ${Select} $Word
      ${Case} "/S"
      ${Case} "/ALLES"
        StrCpy $WithData yes
      ${Case} "/INNEN"
        StrCpy $Inner yes
      ${CaseElse}
        StrCpy $ProblemCode ${WRONG_CALL}
        StrCpy $Problem "$Word ist hier nichts, was das Deinstallieren kennt: /S ohne Fragen, /ALLES auch \
          Einstellungen und aufgehobene Aufträge."
        Call un.Refuse
    ${EndSelect}
  ${Loop}
FunctionEnd
