' Put in front of every VBScript test by run-wine-tests.sh: the counters,
' Check, and Finish, which prints the SUMMARY line the runner insists on.
Option Explicit

Dim passed, failed
passed = 0
failed = 0

Sub Check(ok, name, detail)
  If ok Then
    passed = passed + 1
    WScript.Echo "PASS " & name
  Else
    failed = failed + 1
    WScript.Echo "FAIL " & name & ": " & detail
  End If
End Sub

' With On Error Resume Next a check whose expression fails is skipped
' silently; counting them against the expected number catches that.
Sub Finish(expected)
  Check passed + failed = expected, "every check ran", (passed + failed) & " of " & expected
  WScript.Echo "SUMMARY passed=" & passed & " failed=" & failed
End Sub
