// Put in front of every JScript test by run-wine-tests.sh: the counters,
// check, raised, hex, and finish, which prints the SUMMARY line the runner
// insists on.
var passed = 0, failed = 0;

function check(ok, name, detail) {
  if (ok) {
    passed++;
    WScript.Echo("PASS " + name);
  } else {
    failed++;
    WScript.Echo("FAIL " + name + ": " + detail);
  }
}

// Runs fn and returns the error it raised (null when it raised none).
function raised(fn) {
  try {
    fn();
  } catch (e) {
    return e;
  }
  return null;
}

// JScript reports HRESULTs as signed numbers; compare them unsigned.
function hex(n) {
  return (n >>> 0).toString(16).toUpperCase();
}

function finish() {
  WScript.Echo("SUMMARY passed=" + passed + " failed=" + failed);
}
