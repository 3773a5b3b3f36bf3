; Saying why something cannot be done: in a box or, where nobody sees boxes, as the programs do it: on standard error
; where that is a file or a pipe, or on the caller's console.

!macro saying un
Function ${un}Say  ; $Problem
  ${IfNot} ${Silent}
  ${OrIf} $Inner == yes
    MessageBox MB_OK|MB_ICONEXCLAMATION $Problem
    Return
  ${EndIf}
  Push $0
  Push $1
  Push $2
  StrCpy $2 "$Problem$\r$\n"
  StrLen $1 $2
  System::Call 'kernel32::GetStdHandle(i -12) p.r0'
  System::Call 'kernel32::GetFileType(p r0) i.s'
  Exch $3
  ${If} $3 = 1
  ${OrIf} $3 = 3
    System::Call 'kernel32::WriteFile(p r0, m r2, i r1, *i, p 0)'
  ${Else}
    System::Call 'kernel32::AttachConsole(i -1)'
    System::Call 'kernel32::CreateFileW(w "CONOUT$$", i 0xC0000000, i 3, p 0, i 3, i 0, p 0) p.r0'
    System::Call 'kernel32::WriteConsoleW(p r0, w r2, i r1, *i, p 0)'
  ${EndIf}
  Pop $3
  Pop $2
  Pop $1
  Pop $0
FunctionEnd

; Ends here, before anything was done.
Function ${un}Refuse  ; $Problem, $ProblemCode
  Call ${un}Say
  SetErrorLevel $ProblemCode
  Quit
FunctionEnd
!macroend

!insertmacro saying ""
!insertmacro saying "un."
