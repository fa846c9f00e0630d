#!/usr/bin/env python3
"""End-to-end test of the mail files the simulator writes for the mails a user sends.

    sent_mail_test.py <tools_tests> <scratch dir>

The test program writes the mails of its table (tests/tools/eml_writer_test.cpp) into the
scratch folder, with manifest.json saying what each mail was made of. Python's standard `email`
package then reads every file, as any mail program would, and what it finds must be what went
in: subject, sender, recipients, date, plain body and each attachment's name, type and bytes;
Bcc must be gone. Nothing of the writer's own code (nor of GMime) takes part in the reading.
"""
import datetime
import email.policy
import email.utils
import json
import os
import re
import shutil
import subprocess
import sys
from email.parser import BytesParser

TEST_NAME = "WriteEml.WritesTheTableForTheOracle"
FORBIDDEN = set('\\/:*?"<>|')


def expected_file_name(serial, subject):
    # The sent/ folder's naming rule, written out again independently of SentFileName.
    cleaned = "".join("_" if c in FORBIDDEN or ord(c) < 0x20 or 0x7F <= ord(c) <= 0x9F else c
                      for c in subject[:60])
    return "%03d-%s.eml" % (serial, cleaned or "no subject")


def typed_people(typed):
    # How a reader must see what the user typed: "Name <address>" or an address is one mailbox;
    # a name without an address survives only as a group of that name without members.
    people = []
    for text in typed:
        if "@" in text:
            people.append(email.utils.parseaddr(text))
        else:
            people.append(("group", text.strip()))
    return people


def header_people(header):
    if header is None:
        return []
    people = []
    for group in header.groups:
        if group.display_name is None:
            people.extend((a.display_name, a.addr_spec) for a in group.addresses)
        else:
            people.append(("group", group.display_name))
            people.extend((a.display_name, a.addr_spec) for a in group.addresses)
    return people


def sent_body(text):
    # LF, CRLF and a lone CR each end a line, and the last line has an end too: mail that went
    # through SMTP always does.
    text = text.replace("\r\n", "\n").replace("\r", "\n")
    return text if text == "" or text.endswith("\n") else text + "\n"


def check_mail(entry, folder, message_ids):
    """Returns the list of what is wrong with one mail (empty when it is right)."""
    wrong = []

    def expect(what, got, want):
        if got != want:
            wrong.append("%s: got %r, want %r" % (what, got, want))

    expect("file name", entry["file"], expected_file_name(entry["serial"], entry["subject"]))
    path = os.path.join(folder, entry["file"])
    if not os.path.isfile(path):
        return wrong + ["no file %s" % entry["file"]]
    with open(path, "rb") as f:
        raw = f.read()
    if re.search(rb"(?<!\r)\n|\r(?!\n)", raw):
        wrong.append("a line does not end in CRLF")

    msg = BytesParser(policy=email.policy.default).parsebytes(raw)
    for part in msg.walk():
        if part.defects:
            wrong.append("defects in %s: %r" % (part.get_content_type(), part.defects))
    expect("subject", str(msg["subject"] or ""), entry["subject"])
    expect("from", header_people(msg["from"]), [(entry["from_name"], entry["from_address"])])
    expect("to", header_people(msg["to"]), typed_people(entry["to"]))
    expect("cc", header_people(msg["cc"]), typed_people(entry["cc"]))
    expect("bcc header", msg["bcc"], None)
    for hidden in entry["bcc"]:
        if email.utils.parseaddr(hidden)[1].encode() in raw:
            wrong.append("the Bcc address %s is in the file" % hidden)
    date = msg["date"].datetime if msg["date"] else None
    expect("date", date, datetime.datetime.fromisoformat(entry["date"]).replace(
        tzinfo=datetime.timezone.utc))
    message_id = str(msg["message-id"] or "")
    if not re.fullmatch(r"<[^<>@\s]+@[^<>@\s]+>", message_id) or message_id in message_ids:
        wrong.append("Message-ID %r is malformed or not unique" % message_id)
    message_ids.add(message_id)

    body = msg.get_body(preferencelist=("plain",))
    if body is None:
        return wrong + ["no plain body"]
    expect("body", body.get_content().replace("\r\n", "\n"), sent_body(entry["body"]))
    expect("body character set", body.get_content_charset(), "utf-8")
    # Text is sent in canonical form: CRLF lines also inside base64, where no newline
    # conversion of the file reaches them.
    if re.search(rb"(?<!\r)\n", body.get_payload(decode=True)):
        wrong.append("the decoded body has a bare LF")
    expect("type", msg.get_content_type(),
           "multipart/mixed" if entry["attachments"] else "text/plain")
    if msg.is_multipart():
        expect("first part", next(msg.iter_parts()).get_content_type(), "text/plain")
    got = [(p.get_filename(), p.get_content_type(), p.get_payload(decode=True).hex(),
            p.get_content_disposition(), p["content-transfer-encoding"])
           for p in msg.iter_attachments()]
    want = [(a["name"], a["type"], a["hex"], "attachment", "base64") for a in entry["attachments"]]
    expect("attachments", got, want)
    return wrong


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, folder = sys.argv[1], sys.argv[2]
    shutil.rmtree(folder, ignore_errors=True)
    run = subprocess.run([program, "--gtest_filter=" + TEST_NAME],
                         env=dict(os.environ, CORVINA_SENT_DIR=folder),
                         capture_output=True, text=True, timeout=120)
    if run.returncode != 0 or "[  PASSED  ] 1 test" not in run.stdout:
        print(run.stdout + run.stderr)
        print("0 passed, 1 failed (the test program did not write the mails)")
        return 1
    with open(os.path.join(folder, "manifest.json"), encoding="utf-8") as f:
        manifest = json.load(f)

    passed = failed = 0
    message_ids = set()
    for entry in manifest:
        wrong = check_mail(entry, folder, message_ids)
        if wrong:
            failed += 1
            print("FAIL %s" % entry["file"])
            for line in wrong:
                print("    " + line)
        else:
            passed += 1
    files = {name for name in os.listdir(folder) if name.endswith(".eml")}
    stray = files - {entry["file"] for entry in manifest}
    if stray or not manifest:
        failed += 1
        print("FAIL the folder holds %d mails the manifest does not name (%s)"
              % (len(stray), ", ".join(sorted(stray))))
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
