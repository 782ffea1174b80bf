' Run after unregistration: the classes must be gone.
Option Explicit
Dim passed, failed, app
passed = 0
failed = 0
On Error Resume Next
Set app = CreateObject("Tandrel4.Application")
If Err.Number = 429 Then
  passed = passed + 1
  WScript.Echo "PASS CreateObject fails after unregistration"
Else
  failed = failed + 1
  WScript.Echo "FAIL CreateObject fails after unregistration: Err.Number " & Err.Number
End If
Err.Clear
Set app = CreateObject("Tandrel4.FolderData.1")
If Err.Number = 429 Then
  passed = passed + 1
  WScript.Echo "PASS CreateObject FolderData.1 fails after unregistration"
Else
  failed = failed + 1
  WScript.Echo "FAIL CreateObject FolderData.1 fails after unregistration: Err.Number " & Err.Number
End If
WScript.Echo "SUMMARY passed=" & passed & " failed=" & failed
