; The installed files. Each is replaced in steps: the new one lies beside it (".neu"), the old one is put aside
; (".alt"), which works while it runs, and the new one takes its place. Until that was done with all of them,
; everything can be put back.

!macro files un
; The path of the file with the number $0 in $1; empty behind the last one.
Function ${un}FileAt
  ${Select} $0
    ${Case} 1
      StrCpy $1 "KRVWinPr.exe"
    ${Case} 2
      StrCpy $1 "KRVWinPrBote.exe"
    ${Case} 3
      StrCpy $1 "LIZENZ.txt"
    ${Case} 4
      StrCpy $1 "KRVWinPr-Handbuch.html"
    ${Case} 5
      StrCpy $1 "KRVWinPr-Handbuch.pdf"
    ${Case} 6
      StrCpy $1 "${UNINSTALLER}"
    ${CaseElse}
      StrCpy $1 ""
      Return
  ${EndSelect}
  StrCpy $1 "$INSTDIR\$1"
FunctionEnd

; Whether the files $0 and $1 have the same content: yes or no in $0.
Function ${un}SameContent
  Push $2
  Push $3
  Push $4
  StrCpy $4 no
  ClearErrors
  FileOpen $2 $0 r
  FileOpen $3 $1 r
  ${IfNot} ${Errors}
    FileSeek $2 0 END $0
    FileSeek $3 0 END $1
    ${If} $0 = $1
    ${AndIf} $0 > 0
      Call ${un}CompareOpenFiles
    ${EndIf}
  ${EndIf}
  FileClose $2
  FileClose $3
  StrCpy $0 $4
  Pop $4
  Pop $3
  Pop $2
FunctionEnd

Function ${un}CompareOpenFiles  ; $2 and $3, of $0 bytes: yes in $4 where they are the same
  Push $5
  Push $6
  Push $7
  Push $8
  System::Call 'kernel32::CreateFileMappingW(p r2, p 0, i 2, i 0, i 0, p 0) p.r5'
  System::Call 'kernel32::CreateFileMappingW(p r3, p 0, i 2, i 0, i 0, p 0) p.r6'
  System::Call 'kernel32::MapViewOfFile(p r5, i 4, i 0, i 0, p 0) p.r7'
  System::Call 'kernel32::MapViewOfFile(p r6, i 4, i 0, i 0, p 0) p.r8'
  ${If} $7 P<> 0
  ${AndIf} $8 P<> 0
    System::Call 'ntdll::RtlCompareMemory(p r7, p r8, p r0) p.r1'
    ${If} $0 = $1
      StrCpy $4 yes
    ${EndIf}
  ${EndIf}
  System::Call 'kernel32::UnmapViewOfFile(p r7)'
  System::Call 'kernel32::UnmapViewOfFile(p r8)'
  System::Call 'kernel32::CloseHandle(p r5)'
  System::Call 'kernel32::CloseHandle(p r6)'
  Pop $8
  Pop $7
  Pop $6
  Pop $5
FunctionEnd

; Deletes the file $0, or has Windows do it with the next start: somebody may still have it open.
Function ${un}DeleteSoon
  Delete $0
  ${If} ${FileExists} $0
    System::Call 'kernel32::MoveFileExW(w r0, p 0, i 4)'
  ${EndIf}
FunctionEnd
!macroend

!insertmacro files ""
!insertmacro files "un."

; Moves the file $1 to $2, with patience for a virus scanner that looks at a new file; the error flag says that it
; failed. Whoever asks for that flag clears it.
Function Move
  Push $3
  ${For} $3 1 20
    ClearErrors
    Rename $1 $2
    ${IfNot} ${Errors}
      Pop $3
      Return
    ${EndIf}
    Sleep 100
  ${Next}
  Pop $3
  SetErrors
FunctionEnd

; $1.neu takes the place of $1, which becomes $1.alt; or everything stays, with the error flag.
Function Replace
  Push $2
  Push $1
  Delete "$1.alt"
  ClearErrors
  ${If} ${FileExists} $1
    StrCpy $2 "$1.alt"
    Call Move
  ${EndIf}
  ${If} ${Errors}
    SetErrors
  ${Else}
    StrCpy $2 $1
    StrCpy $1 "$1.neu"
    Call Move
    ${If} ${Errors}
      Rename "$2.alt" $2
      SetErrors
    ${EndIf}
  ${EndIf}
  Pop $1
  Pop $2
FunctionEnd

; All of them, or none: then the error flag, and the one that could not be replaced in $1.
Function ReplaceAll
  StrCpy $0 1
  ${Do}
    Call FileAt
    ${If} $1 == ""
      Return
    ${EndIf}
    Call Replace
    ${If} ${Errors}
      ${Break}
    ${EndIf}
    IntOp $0 $0 + 1
  ${Loop}
  Push $1
  ${While} $0 > 1
    IntOp $0 $0 - 1
    Call FileAt
    Delete $1
    Rename "$1.alt" $1
  ${EndWhile}
  Pop $1
  SetErrors
FunctionEnd

; What the replacing has left.
Function TidyUp
  StrCpy $2 1
  ${Do}
    StrCpy $0 $2
    Call FileAt
    ${If} $1 == ""
      ${Break}
    ${EndIf}
    Delete "$1.neu"
    StrCpy $0 "$1.alt"
    Call DeleteSoon
    IntOp $2 $2 + 1
  ${Loop}
  ClearErrors
FunctionEnd
