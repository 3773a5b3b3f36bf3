; The messenger of hosts in an emulator is set up, ended and begun by its own commands, as the user whose it is.

; A command of the messenger in the folder $3, with the arguments $1: its exit code in $0, its words in $1.
!macro messenger un
Function ${un}TellMessenger
  nsExec::ExecToStack '"$3\KRVWinPrBote.exe" $1'
  Pop $0
  Pop $1
FunctionEnd

; Ends the one of this session, where it runs; $MessengerRan says that it did.
Function ${un}EndMessenger
  ${If} $Inner == yes
  ${OrIfNot} ${FileExists} "$3\KRVWinPrBote.exe"
    Return
  ${EndIf}
  System::Call 'kernel32::OpenEventW(i 2, i 0, w "Local\KRVWinPrBote") p.r0'
  ${If} $0 P<> 0
    System::Call 'kernel32::CloseHandle(p r0)'
    DetailPrint "Der Bote wird beendet."
    StrCpy $1 "/AUS"
    Call ${un}TellMessenger
    StrCpy $MessengerRan yes
  ${EndIf}
FunctionEnd

Function ${un}BeginMessengerAgain
  ${If} $MessengerRan == yes
    DetailPrint "Der Bote wird wieder gestartet."
    StrCpy $1 "/EIN"
    Call ${un}TellMessenger
    StrCpy $MessengerRan ""
  ${EndIf}
FunctionEnd
!macroend

!insertmacro messenger ""
!insertmacro messenger "un."
