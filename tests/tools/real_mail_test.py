#!/usr/bin/env python3
"""End-to-end test of the simulator's mail reading and the add-in's Save over a corpus of mails.

    real_mail_test.py <corvina-sim> <corpus dir> <scratch dir>

Every mail of the corpus (tests/data/mail, written by make_corpus.py there) is saved by the
add-in into a folder of its own, and the files that come out are compared, name and bytes, with
what Python's standard `email` package takes out of the same file. Python is the independent
reader here: nothing of the simulator's own parsing is reused.

What is compared, per mail:
- the attachments in document order: an attached message (message/rfc822) is one file, named
  after its Subject + ".eml" ("Untitled.eml" without one) and holding the attached message's
  bytes as they stand in the file; its inside is not looked at. Every other leaf part with a file
  name is one file with its decoded content;
- the names as Windows can store them: \\ / : * ? " < > | and control characters become "_",
  trailing dots and blanks go, a name over 200 characters is cut in its stem (room is left for
  the folder: Windows paths stop at 260 characters);
- names ignoring case, the last file of a name winning (a later save overwrites an earlier one).
Files Python sees no mail in (empty, or no header field before the body) must be skipped by the
simulator with a line naming them, and the run must go on.
"""
import email
import email.message
import email.policy
import os
import re
import shutil
import subprocess
import sys
from email.parser import BytesParser

POLICY = email.policy.default
TIMEOUT_SECONDS = 300
FORBIDDEN = set('\\/:*?"<>|')
MAX_NAME = 200
MAX_EXTENSION = 16  # with its dot; a longer tail after the last dot is no extension


# --- the oracle --------------------------------------------------------------------------------------

def strip_leading_blank_lines(raw):
    # A mail program accepts a file that starts with lines of blanks before the headers, and so
    # does the simulator; Python would take such a line for a stray folded header, so the blank
    # lines are removed before Python reads the file.
    return re.sub(rb"\A(?:[ \t]+\r?\n)+", b"", raw)


def decode_8bit(text):
    """Header text as Python keeps it (raw 8-bit bytes surrogate-escaped) read as UTF-8 when the
    bytes are valid UTF-8, else as Windows-1252 (its five unused bytes as Latin-1), which is
    how a Windows mail program reads an unlabelled 8-bit header."""
    data = text.encode("utf-8", "surrogateescape")
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return "".join(bytes([b]).decode("windows-1252", "ignore") or chr(b) for b in data)


def has_8bit(text):
    return any("\udc80" <= c <= "\udcff" for c in text)


def raw_header(part, name):
    """The first header of this name exactly as the file had it, line breaks removed the way
    Python's own header parsing removes them, or None."""
    for key, value in part.raw_items():
        if key.lower() == name.lower():
            return re.sub(r"\r|\n", "", value)
    return None


def file_name(part):
    # For raw 8-bit bytes in a parameter, Python's header parsing reads them as UTF-8 and puts
    # U+FFFD for bytes that are no UTF-8; the raw header (which keeps the bytes) is read again
    # with the 8-bit rule and handed to the same parameter parsing.
    if not any(has_8bit(raw_header(part, h) or "") for h in ("Content-Type", "Content-Disposition")):
        return part.get_filename()
    fixed = email.message.EmailMessage(policy=POLICY)
    for header in ("Content-Type", "Content-Disposition"):
        value = raw_header(part, header)
        if value is not None:
            fixed[header] = decode_8bit(value)
    return fixed.get_filename()


def subject(message):
    value = raw_header(message, "Subject")
    if value is None:
        return None
    return str(POLICY.header_factory("subject", decode_8bit(value) if has_8bit(value) else value))


def utf16_units(text):
    return len(text.encode("utf-16-le")) // 2


def cut_to(text, units):
    while utf16_units(text) > units:
        text = text[:-1]
    return text


def windows_name(name):
    name = "".join("_" if c in FORBIDDEN or ord(c) < 0x20 else c for c in name).rstrip(" .")
    if utf16_units(name) > MAX_NAME:
        stem, dot, extension = name.rpartition(".")
        if dot and stem and utf16_units(extension) + 1 <= MAX_EXTENSION:
            name = cut_to(stem, MAX_NAME - utf16_units(extension) - 1) + "." + extension
        else:
            name = cut_to(name, MAX_NAME)
    return name


def message_file_name(message):
    return windows_name((subject(message) or "Untitled") + ".eml")


# Raw byte ranges of the parts. `as_bytes` does not give an attached message back as it stands
# in the file (it folds again every header line longer than 78 characters, e.g. Received:), so
# the oracle cuts the attached message out of the file itself: the body of the message/rfc822
# part runs from the blank line after the part's headers to the line end before the next
# delimiter line (that line end belongs to the delimiter, RFC 2046).

def header_end(raw, start, end):
    """Where the body of the entity at raw[start:end] begins (after its first empty line)."""
    for empty in (b"\r\n", b"\n"):   # no header at all
        if raw.startswith(empty, start, end):
            return start + len(empty)
    match = re.compile(rb"\n\r?\n").search(raw, start, end)
    return match.end() if match else end


def child_ranges(raw, start, end, boundary):
    delimiter = re.compile(rb"^--" + re.escape(boundary.encode("utf-8", "surrogateescape")) +
                           rb"(--)?[ \t]*(\r?\n|\Z)", re.M)
    ranges, open_at = [], None
    for match in delimiter.finditer(raw, start, end):
        if open_at is not None:
            cut = match.start()
            cut -= 2 if raw[cut - 2:cut] == b"\r\n" else 1 if raw[cut - 1:cut] == b"\n" else 0
            ranges.append((open_at, max(cut, open_at)))
        if match.group(1):
            return ranges
        open_at = match.end()
    if open_at is not None:
        ranges.append((open_at, end))   # never closed: the last part runs to the end
    return ranges


def expected_attachments(raw, message):
    """[(name, bytes)] in document order."""
    found = []

    def visit(part, span):
        if part.get_content_type() == "message/rfc822":
            if span is None:
                raise ValueError("cannot locate the attached message in the file")
            found.append((message_file_name(part.get_payload(0)),
                          raw[header_end(raw, *span):span[1]]))
            return
        if part.is_multipart():
            children = part.get_payload()
            spans = [None] * len(children)
            if span is not None and part.get_boundary():
                located = child_ranges(raw, header_end(raw, *span), span[1], part.get_boundary())
                if len(located) == len(children):
                    spans = located
            for child, child_span in zip(children, spans):
                visit(child, child_span)
            return
        name = file_name(part)
        if name:
            found.append((windows_name(name), part.get_payload(decode=True) or b""))

    top = 0
    if raw.startswith(b"From ") and message.get_unixfrom():
        top = raw.index(b"\n") + 1
    visit(message, (top, len(raw)))
    return found


def read_mail(path):
    """(is a mail, [(name, bytes)]) as Python sees the file; the list is None, with the reason
    in its place, when the oracle itself cannot take the file apart."""
    with open(path, "rb") as f:
        raw = strip_leading_blank_lines(f.read())
    message = BytesParser(policy=POLICY).parsebytes(raw)
    if not message.keys():
        return False, []
    try:
        return True, expected_attachments(raw, message)
    except (ValueError, LookupError) as e:
        return True, "the oracle cannot read it: %s" % e


def last_of_each_name(attachments):
    saved = {}
    for name, data in attachments:
        saved.pop(name.lower(), None)
        saved[name.lower()] = (name, data)
    return saved


# --- the run -----------------------------------------------------------------------------------------

SETTINGS = "[Vireo\\Configuration]\nAutoReplace=1\nIncludeHtmlEmbeded=1\n"


def run_simulator(sim, corpus, mails, scratch):
    profile = os.path.join(scratch, "profile")
    shutil.rmtree(scratch, ignore_errors=True)
    shutil.copytree(corpus, os.path.join(profile, "mailbox"), ignore=shutil.ignore_patterns("*.py"))
    # The add-in creates only the missing last folder of a browsed path (it asks about that one
    # folder), so the parent C:\out is there from the start.
    os.makedirs(os.path.join(profile, "drive", "out"))
    with open(os.path.join(profile, "settings.ini"), "w", newline="\r\n") as f:
        f.write(SETTINGS)
    script = os.path.join(scratch, "save-each.script")
    with open(script, "w") as f:
        f.write("start\n")
        for k in range(1, len(mails) + 1):
            f.write("select %d\nbrowse-folder C:\\out\\%d\nanswer yes\nclick Vireo_Save...\n" % (k, k))
    # The "C" locale: the simulator must not depend on the user's locale for non-ASCII names.
    env = {k: v for k, v in os.environ.items()
           if k not in ("LANG", "LANGUAGE") and not k.startswith("LC_")}
    work = os.path.join(scratch, "run")
    try:
        done = subprocess.run([sim, "--profile", profile, "--script", script, "--work", work],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=env,
                              timeout=TIMEOUT_SECONDS)
        stdout, stderr, code = done.stdout, done.stderr, done.returncode
    except subprocess.TimeoutExpired as e:
        stdout, stderr, code = e.stdout or b"", e.stderr or b"", None
    with open(os.path.join(scratch, "transcript.txt"), "wb") as f:
        f.write(stdout)
    return stdout.decode("utf-8", "replace"), stderr.decode("utf-8", "replace"), code, work


def inbox_positions(transcript):
    """The positions of the Inbox listing (`  k. ...` lines under "Inbox (...):")."""
    positions, inside = [], False
    for line in transcript.splitlines():
        if line.startswith("Inbox ("):
            inside = True
        elif inside and not line.strip():
            break
        elif inside:
            match = re.match(r"  (\d+)\. ", line)
            if match:
                positions.append(int(match.group(1)))
    return positions


def saved_files(folder):
    files = {}
    if os.path.isdir(folder):
        for entry in sorted(os.listdir(os.fsencode(folder))):
            name = entry.decode("utf-8", "surrogateescape")
            path = os.path.join(os.fsencode(folder), entry)
            data = b"<a folder>"
            if os.path.isfile(path):
                with open(path, "rb") as f:
                    data = f.read()
            files.setdefault(name.lower(), []).append((name, data))
    return files


def compare(expected, folder):
    problems = []
    saved = saved_files(folder)
    for key, entries in saved.items():
        if len(entries) > 1:
            problems.append("names differing only in case: " + ", ".join(repr(n) for n, _ in entries))
    for key, (name, data) in expected.items():
        if key not in saved:
            problems.append("missing %r (%d bytes)" % (name, len(data)))
            continue
        got_name, got = saved[key][0]
        if got != data:
            at = next((i for i, (a, b) in enumerate(zip(got, data)) if a != b), min(len(got), len(data)))
            problems.append("%r: %d bytes saved, %d expected, first difference at byte %d"
                            % (got_name, len(got), len(data), at))
    for key, entries in saved.items():
        if key not in expected:
            name, data = entries[0]
            problems.append("unexpected %r (%d bytes)" % (name, len(data)))
    return problems


def main(argv):
    if len(argv) != 4:
        print(__doc__.split("\n\n")[1], file=sys.stderr)
        return 2
    sim, corpus, scratch = argv[1:]
    files = sorted(f for f in os.listdir(corpus) if f.endswith(".eml"))
    mails, skipped = [], []
    for file in files:
        is_mail, attachments = read_mail(os.path.join(corpus, file))
        (mails if is_mail else skipped).append((file, attachments))

    transcript, stderr, code, work = run_simulator(sim, corpus, mails, scratch)
    run_ok = True
    if code is None:
        print("FAIL (run): corvina-sim did not finish within %d s" % TIMEOUT_SECONDS)
        run_ok = False
    elif code < 0:
        print("FAIL (run): corvina-sim was ended by signal %d" % -code)
        run_ok = False
    if stderr.strip():
        print("corvina-sim wrote to stderr:\n  " + "\n  ".join(stderr.strip().splitlines()[-10:]))
    positions = inbox_positions(transcript)
    if positions != list(range(1, len(positions) + 1)) or len(positions) > len(mails):
        print("FAIL (run): the Inbox lists positions %s for %d mails" % (positions, len(mails)))
        run_ok = False

    passed = failed = 0
    lines = transcript.splitlines()
    for file, _ in skipped:
        if any(file in line for line in lines):
            passed += 1
        else:
            failed += 1
            print("FAIL %s: no transcript line says it was skipped" % file)
    for k, (file, attachments) in enumerate(mails, 1):
        problems = [] if k in positions else ["not in the Inbox listing as item %d" % k]
        if isinstance(attachments, str):
            problems.append(attachments)   # never guess what the mail should give
        else:
            problems += compare(last_of_each_name(attachments),
                                os.path.join(work, "drive", "out", str(k)))
        if problems:
            failed += 1
            print("FAIL %s (item %d):\n    %s" % (file, k, "\n    ".join(problems)))
        else:
            passed += 1
    print("transcript: " + os.path.join(scratch, "transcript.txt"))
    print("%d passed, %d failed" % (passed, failed))
    return 0 if failed == 0 and run_ok else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
