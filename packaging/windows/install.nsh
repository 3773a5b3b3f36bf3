; The installation itself.

Function .onInit
  !insertmacro useOwnRegistry
  StrCpy $GivenFolder $INSTDIR
  Call ReadCommandLine
  Call CheckSystem
  Call BeTheOnlyOne
  StrCpy $Mode $WishedMode
  ${If} $Mode == ""
    Call ChooseMode
  ${EndIf}
  Call TakeMode
  ${If} ${Silent}
    Call CheckMode
    ${If} $Problem != ""
      Call Refuse
    ${EndIf}
    Call CheckHost
    ${If} $Problem != ""
      Call Refuse
    ${EndIf}
  ${EndIf}
FunctionEnd

Function CheckSystem
  ${If} ${AtLeastWinVista}
    Return
  ${ElseIf} ${IsWinXP}
  ${AndIf} ${AtLeastServicePack} 3
    Return
  ${ElseIf} ${IsWin2003}
  ${AndIf} ${AtLeastServicePack} 2
    Return
  ${EndIf}
  StrCpy $Problem "${PRODUCT} braucht Windows XP mit Service Pack 3 oder ein neueres Windows."
  StrCpy $ProblemCode ${OLD_SYSTEM}
  Call Refuse
FunctionEnd

Function BeTheOnlyOne
  ${If} $Inner != yes
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "${PRODUCT}Setup") p.r1 ?e'
    Pop $0
    ${If} $0 = 183
      StrCpy $Problem "Das Setup von ${PRODUCT} läuft schon."
      StrCpy $ProblemCode ${FAILED}
      Call Refuse
    ${EndIf}
  ${EndIf}
FunctionEnd

; As it is installed already; for the user alone where it is not.
Function ChooseMode
  StrCpy $Mode "benutzer"
  ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
  ReadRegStr $1 HKLM "${ENTRY}" "InstallLocation"
  ${If} $0 == ""
  ${AndIf} $1 != ""
    StrCpy $Mode "alle"
  ${EndIf}
FunctionEnd

; What follows from $Mode: places, and what was chosen before.
Function TakeMode
  !insertmacro applyMode
  ReadRegStr $OldVersion SHCTX "${ENTRY}" "DisplayVersion"
  ReadRegStr $OldFolder SHCTX "${ENTRY}" "InstallLocation"
  ReadRegStr $OldHostKind SHCTX "${ENTRY}" "HostArt"
  ReadRegStr $OldHostFolder SHCTX "${ENTRY}" "HostOrdner"
  ${If} $WishedHost != yes
    StrCpy $HostKind $OldHostKind
    StrCpy $HostFolder $OldHostFolder
  ${EndIf}
  ${If} $OldFolder != ""
    StrCpy $INSTDIR $OldFolder
  ${ElseIf} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${ElseIf} $Mode == "benutzer"
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
  ${Else}
    Call HasWideProgram
    ${If} $0 == yes
      StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
    ${Else}
      StrCpy $INSTDIR "$PROGRAMFILES32\${PRODUCT}"
    ${EndIf}
  ${EndIf}
FunctionEnd

; Whether the program for 64 bits is this system's: yes or no in $0.
Function HasWideProgram
  StrCpy $0 no
  ${If} ${IsNativeAMD64}
  ${AndIf} ${AtLeastWin7}
    StrCpy $0 yes
  ${EndIf}
FunctionEnd

; In $Problem why this cannot be installed for whom it is to be.
Function CheckMode
  StrCpy $Problem ""
  StrCpy $ProblemCode ${WRONG_CALL}
  ${If} $Mode == "alle"
    ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
    StrCpy $1 "nur für Sie"
  ${Else}
    ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    StrCpy $1 "für alle Benutzer"
  ${EndIf}
  ${If} $0 != ""
    StrCpy $Problem "${PRODUCT} ist schon $1 eingerichtet, in $0. Bitte dort zuerst deinstallieren; die \
      Einstellungen bleiben."
    Return
  ${EndIf}
  ${If} $GivenFolder != ""
  ${AndIf} $GivenFolder != $INSTDIR
    StrCpy $Problem "${PRODUCT} liegt schon in $INSTDIR. Für einen anderen Ordner bitte zuerst deinstallieren; die \
      Einstellungen bleiben."
    Return
  ${EndIf}
  Call MayChangeSystem
  ${If} "$Mode $0" == "alle no"
  ${AndIf} ${Silent}
    StrCpy $ProblemCode ${NO_RIGHTS}
    StrCpy $Problem "Für alle Benutzer einrichten kann nur ein Administrator: bitte mit „Als Administrator \
      ausführen“ starten."
    Return
  ${EndIf}
  ${VersionCompare} "$OldVersion" "${VERSION}" $0
  ${If} $0 = 1
  ${AndIf} $MayGoBack != yes
    StrCpy $ProblemCode ${NEWER_THERE}
    StrCpy $Problem "Es ist die neuere Version $OldVersion eingerichtet."
  ${EndIf}
FunctionEnd

Section
  AddSize ${SIZE}
  StrCpy $3 $INSTDIR
  Call EndMessenger
  Call LeaveEmulator
  Call MayChangeSystem
  ${If} "$Mode $0" == "alle no"
    Call InstallAsAdministrator
  ${Else}
    Call InstallHere
  ${EndIf}
  StrCpy $3 $INSTDIR
  StrCpy $LeftEmulator ""
  Call EnterEmulator
  Call BeginMessengerAgain
SectionEnd

Function InstallAsAdministrator
  DetailPrint "Windows fragt nach den Rechten eines Administrators."
  StrCpy $1 "/S /INNEN /ALLE /DOWNGRADE /OHNEHOST /D=$INSTDIR"
  ${If} $HostKind != ""
    StrCpy $1 '/S /INNEN /ALLE /DOWNGRADE "/$HostKind=$HostFolder" /D=$INSTDIR'
  ${EndIf}
  Call RunAsAdministrator
  ${If} $0 == 0
    Return
  ${ElseIf} $0 == ${HOST_REFUSED}  ; which was said; all else is in place
    SetErrorLevel $0
    Return
  ${ElseIf} $0 == ""
    StrCpy $0 ${NO_RIGHTS}
    StrCpy $Problem "Windows hat die Rechte eines Administrators nicht gegeben. Es bleibt alles, wie es war."
    Call Say
  ${EndIf}
  SetErrorLevel $0
  Abort
FunctionEnd

Function InstallHere
  ClearErrors
  SetOutPath $INSTDIR
  Call HasWideProgram
  ${If} $0 == yes
    File "/oname=KRVWinPr.exe.neu" "${FILES}/x64/KRVWinPr.exe"
    File "/oname=KRVWinPrBote.exe.neu" "${FILES}/x64/KRVWinPrBote.exe"
  ${Else}
    File "/oname=KRVWinPr.exe.neu" "${FILES}/x86/KRVWinPr.exe"
    File "/oname=KRVWinPrBote.exe.neu" "${FILES}/x86/KRVWinPrBote.exe"
  ${EndIf}
  File "/oname=LIZENZ.txt.neu" "${FILES}/LIZENZ.txt"
  File "/oname=KRVWinPr-Handbuch.html.neu" "${FILES}/KRVWinPr-Handbuch.html"
  File "/oname=KRVWinPr-Handbuch.pdf.neu" "${FILES}/KRVWinPr-Handbuch.pdf"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}.neu"
  ${IfNot} ${Errors}
    Call ReplaceAll
  ${Else}
    StrCpy $1 $INSTDIR
    SetErrors
  ${EndIf}
  ${If} ${Errors}
    StrCpy $Problem "$1 lässt sich nicht schreiben. Bitte Programme schließen, die diese Datei benutzen, und das \
      Setup noch einmal starten. Es bleibt alles, wie es war."
    Call Say
    SetErrorLevel ${FAILED}
    Abort
  ${EndIf}
  Call EnterWindowsHost
  Call TidyUp
  Call WriteMenu
  Call WriteEntry
FunctionEnd

Function .onInstFailed
  Call TidyUp
  StrCpy $3 $INSTDIR
  ${If} $LeftEmulator == yes
    StrCpy $1 '/EIN "$OldHostFolder"'
    Call TellMessenger
  ${EndIf}
  Call BeginMessengerAgain
  ${If} $OldVersion == ""
    SetOutPath $TEMP
    RMDir $INSTDIR
  ${EndIf}
FunctionEnd
