#!/usr/bin/env python3
"""The two-user sample end to end: what Anna's Outlook sent is a real mail file that Python's
standard `email` package reads back with the same subject, body and attachment bytes, and the
mails reached Ben's add-in (its copies of the PDFs are the bytes Anna attached).

    two_users_test.py <corvina-sim> <samples dir> <scratch dir>
"""
import email
import email.policy
import os
import re
import shutil
import subprocess
import sys

sim, samples, scratch = sys.argv[1:4]
shutil.rmtree(scratch, ignore_errors=True)
env = {k: v for k, v in os.environ.items() if k not in ("LANG", "LC_ALL")}
run = subprocess.run([sim, "--script", os.path.join(samples, "two-users.script"), "--work", scratch],
                     capture_output=True, env=env, timeout=300)
anna_drive = os.path.join(samples, "two-users", "anna", "drive", "Users", "Anna")
expected = [  # subject, To as written, attachment
    ("Plan for Monday", ["ben@corvina.example"], "plan.pdf"),
    ("Plan, second version",
     ["Ben <BEN@corvina.example>", "someone@elsewhere.example", "Cleo <cleo@elsewhere.example>"],
     "plan-v2.pdf"),
    ("Plan, final", ["ben@corvina.example"], "plan.pdf"),
]
passed = failed = 0


def check(what, ok, detail=""):
    global passed, failed
    if ok:
        passed += 1
    else:
        failed += 1
        print(f"FAIL {what} {detail}")


check("the run ends normally", run.returncode == 0, run.stderr.decode(errors="replace"))
sent_dir = os.path.join(scratch, "anna", "sent")
files = sorted(os.listdir(sent_dir)) if os.path.isdir(sent_dir) else []
check("one sent file per sent mail", len(files) == len(expected), str(files))
for name, (subject, to, attachment) in zip(files, expected):
    with open(os.path.join(sent_dir, name), "rb") as f:
        message = email.message_from_binary_file(f, policy=email.policy.default)
    check(f"{name}: subject", message["Subject"] == subject, repr(message["Subject"]))
    check(f"{name}: message id", re.fullmatch(r"<[0-9a-f]{16}@corvina\.invalid>", message["Message-ID"] or ""),
          repr(message["Message-ID"]))
    check(f"{name}: sender", message["From"] == "anna <anna@corvina.example>", repr(message["From"]))
    check(f"{name}: recipients", [str(a) for a in message["To"].addresses] == to, repr(message["To"]))
    body = message.get_body(preferencelist=("plain",)).get_content()
    check(f"{name}: body", body.startswith("Written by the simulator at 11/22/2026"), repr(body))
    parts = [p for p in message.iter_attachments()]
    with open(os.path.join(anna_drive, attachment), "rb") as f:
        original = f.read()
    check(f"{name}: one attachment", len(parts) == 1 and parts[0].get_filename() == attachment,
          repr([p.get_filename() for p in parts]))
    if parts:
        check(f"{name}: attachment bytes", parts[0].get_payload(decode=True) == original)
    # Ben's add-in copied what arrived (the first as the mail came in, the second at start-up).
    copy = os.path.join(scratch, "ben", "drive", "Orders", attachment)
    check(f"{name}: Ben's copy", os.path.isfile(copy) and open(copy, "rb").read() == original, copy)

# The chat sample: the chat mails are mail files too, with the footer another add-in reads.
chat_scratch = scratch + "-chat"
shutil.rmtree(chat_scratch, ignore_errors=True)
run = subprocess.run([sim, "--script", os.path.join(samples, "chat.script"), "--work", chat_scratch],
                     capture_output=True, env=env, timeout=300)
check("the chat run ends normally", run.returncode == 0, run.stderr.decode(errors="replace"))
chat_expected = [  # user, file, first line of the message, address, attachment
    ("anna", "000-Chat message from_ anna@corvina.example.eml", "Hello Ben! Lunch at 12:30?",
     "anna@corvina.example", "plan.pdf"),
    ("ben", "000-Chat message from_ Ben@Corvina.example.eml",
     "Sure <12:30> & I'll bring \"the numbers\"", "Ben@Corvina.example", None),
]
for user, name, first_line, address, attachment in chat_expected:
    path = os.path.join(chat_scratch, user, "sent", name)
    check(f"{path}: written", os.path.isfile(path))
    if not os.path.isfile(path):
        continue
    with open(path, "rb") as f:
        message = email.message_from_binary_file(f, policy=email.policy.default)
    check(f"{name}: subject", message["Subject"] == "Chat message from: " + address, repr(message["Subject"]))
    body = message.get_body(preferencelist=("plain",)).get_content().replace("\r\n", "\n")
    check(f"{name}: message", body.startswith(first_line + "\n"), repr(body[:80]))
    check(f"{name}: footer", "\n-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-\n<FOOTER>\n" in body and
          f"<Email>{address}</Email>" in body, repr(body[-200:]))
    parts = [p.get_filename() for p in message.iter_attachments()]
    check(f"{name}: attachments", parts == ([attachment] if attachment else []), repr(parts))

print(f"{passed} passed, {failed} failed")
sys.exit(1 if failed else 0)
