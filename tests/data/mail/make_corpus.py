#!/usr/bin/env python3
"""Writes the mail corpus of the end-to-end test (tests/data/mail/*.eml).

Run by hand after a change here (python3 make_corpus.py); the .eml files it writes are kept in
the tree and are the fixture, this script is how they were made and what each one is for.

Every mail is ours, written the way mail programs write them, with one or a few of the oddities
their files show in the wild: file names in RFC 2231 and RFC 2047 form in many charsets, raw
8-bit names, every transfer encoding (uuencode too), TNEF, attached and returned messages,
broken MIME structure, unusual line ends and header spellings. tests/tools/real_mail_test.py
compares what the simulator saves from them with what Python's `email` package takes out.

Most files use CRLF line ends, as mail programs export them; those marked LF use bare line
feeds, as Unix mail spools do. The attachments are small real files made here (PDF, PNG, text,
CSV) or fixed pseudo-random bytes, so two runs write identical files.
"""
import base64
import binascii
import hashlib
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
CRLF, LF = b"\r\n", b"\n"


# --- small real files --------------------------------------------------------------------------

def pdf(text):
    """A one-page PDF showing one line of text, with a correct cross-reference table."""
    stream = b"BT /F1 18 Tf 72 720 Td (" + text.encode("latin-1") + b") Tj ET"
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 4 0 R "
        b"/Resources << /Font << /F1 5 0 R >> >> >>",
        b"<< /Length " + str(len(stream)).encode() + b" >>\nstream\n" + stream + b"\nendstream",
        b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    ]
    out = b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n"
    offsets = []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += str(number).encode() + b" 0 obj\n" + body + b"\nendobj\n"
    xref = len(out)
    out += b"xref\n0 " + str(len(objects) + 1).encode() + b"\n0000000000 65535 f \n"
    out += b"".join(b"%010d 00000 n \n" % o for o in offsets)
    out += (b"trailer\n<< /Size " + str(len(objects) + 1).encode() + b" /Root 1 0 R >>\n"
            b"startxref\n" + str(xref).encode() + b"\n%%EOF\n")
    return out


def png(width, height, rgb):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))
    rows = b"".join(b"\0" + b"".join(bytes(rgb(x, y)) for x in range(width)) for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def noise(seed, size):
    """Fixed pseudo-random bytes (every byte value occurs), e.g. for a zip or an old .doc."""
    out = b""
    block = seed.encode()
    while len(out) < size:
        block = hashlib.sha256(block).digest()
        out += block
    return out[:size]


def text_file(*lines, eol="\r\n", charset="utf-8"):
    return (eol.join(lines) + eol).encode(charset)


def tnef():
    """A small TNEF stream as a Windows mail server writes it: the signature 0x223E9F78, a key,
    then attributes (level, id, length, data, checksum)."""
    def attribute(level, ident, data):
        return (struct.pack("<BII", level, ident, len(data)) + data +
                struct.pack("<H", sum(data) & 0xFFFF))
    return (struct.pack("<IH", 0x223E9F78, 0x4F2A) +
            attribute(1, 0x00089006, struct.pack("<I", 0x00010000)) +          # TNEF version
            attribute(1, 0x00069007, struct.pack("<II", 1252, 0)) +            # OEM code page
            attribute(1, 0x00078008, b"IPM.Microsoft Mail.Note\0") +           # message class
            attribute(2, 0x00018010, b"Budget 2027.xlsx\0") +                  # attachment title
            attribute(2, 0x0006800F, noise("tnef-data", 700)))                 # attachment data


# --- wire forms ----------------------------------------------------------------------------------

def b64(data, width=76):
    text = base64.b64encode(data).decode("ascii")
    return [text[i:i + width] for i in range(0, len(text), width)] or [""]


def uu(data, name, mode="644", backtick=False):
    lines = ["begin %s %s" % (mode, name)]
    for i in range(0, len(data), 45):
        lines.append(binascii.b2a_uu(data[i:i + 45], backtick=backtick).decode("ascii").rstrip("\n"))
    lines += ["`" if backtick else " ", "end"]
    return lines


def qp(data, lower=False):
    """Quoted-printable of text `data` (lines split at LF; a CR before it is dropped, the file's
    line end is the hard break) with soft breaks at 76 columns, and a blank at a line end
    written =20 as RFC 2045 asks."""
    hexform = "=%02x" if lower else "=%02X"
    out = []
    for line in data.replace(b"\r\n", b"\n").split(b"\n"):
        cells = []
        for i, byte in enumerate(line):
            last = i == len(line) - 1
            if byte in (0x20, 0x09) and last:
                cells.append(hexform % byte)
            elif 33 <= byte <= 126 and byte != 0x3D or byte in (0x20, 0x09):
                cells.append(chr(byte))
            else:
                cells.append(hexform % byte)
        current = ""
        for cell in cells:
            if len(current) + len(cell) > 75:
                out.append(current + "=")
                current = ""
            current += cell
        out.append(current)
    return out   # text ending in a line break ends in an empty line: the break before the
                 # boundary belongs to the boundary


def ew(text, charset, kind="B"):
    """One RFC 2047 encoded word."""
    raw = text.encode(charset)
    if kind == "B":
        return "=?%s?B?%s?=" % (charset, base64.b64encode(raw).decode("ascii"))
    safe = b"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-!*+/"
    body = "".join("_" if b == 0x20 else chr(b) if b in safe else "=%02X" % b for b in raw)
    return "=?%s?Q?%s?=" % (charset, body)


def pct(text, charset="utf-8"):
    """The value of an RFC 2231 extended parameter, percent-encoded."""
    safe = b"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$&+-.^_`|~"
    return "".join(chr(b) if b in safe else "%%%02X" % b for b in text.encode(charset))


# --- mail building -------------------------------------------------------------------------------
# A mail is a list of lines (str, written as UTF-8, or bytes, written as they are), joined with
# the file's line end. Multipart bodies are spelled out, so a broken structure is easy to write.

def headers(sender, to, subject, date, msgid, *extra, mime=True):
    lines = []
    if sender is not None:
        lines.append("From: " + sender)
    lines.append("To: " + to)
    if subject is not None:
        lines.append("Subject: " + subject)
    if date is not None:
        lines.append("Date: " + date)
    lines.append("Message-ID: <%s>" % msgid)
    if mime:
        lines.append("MIME-Version: 1.0")
    return lines + list(extra)


def part(head, body):
    return list(head) + [""] + list(body)


def multipart(boundary, parts, preamble=None, epilogue=None, close=True, pad=""):
    lines = list(preamble or [])
    for p in parts:
        lines.append("--" + boundary + pad)
        lines += p
    if close:
        lines.append("--" + boundary + "--" + pad)
    return lines + list(epilogue or [])


def text_part(text, charset="utf-8", cte="8bit"):
    return part(["Content-Type: text/plain; charset=" + charset,
                 "Content-Transfer-Encoding: " + cte], text.split("\n"))


def b64_part(ctype, data, name=None, disposition="attachment", width=76, extra=()):
    head = ["Content-Type: " + ctype + ('; name="%s"' % name if name else "")]
    if disposition:
        head.append("Content-Disposition: " + disposition +
                    ('; filename="%s"' % name if name else ""))
    head.append("Content-Transfer-Encoding: base64")
    return part(head + list(extra), b64(data, width))


def rfc822_part(message_lines, disposition="attachment"):
    head = ["Content-Type: message/rfc822"]
    if disposition:
        head.append("Content-Disposition: " + disposition)
    return part(head, message_lines)


ANNA = "Anna Berger <anna.berger@corvina-mail.example>"
RECEIVED = ("Received: from mx2.relay.example.net (mx2.relay.example.net [198.51.100.23]) by "
            "mail.corvina-mail.example (Postfix) with ESMTPS id 4Q1xYz6rTwz9sN for "
            "<anna.berger@corvina-mail.example>; Tue, 03 Nov 2026 09:14:58 +0100 (CET)")


def date(day, hh=9, mm=15, month="Nov", zone="+0100"):
    weekday = ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"][(day + 6) % 7]  # Nov 2026
    return "%s, %02d %s 2026 %02d:%02d:00 %s" % (weekday, day, month, hh, mm, zone)


def simple(sender, subject, day, msgid, attachments, body="Hello Anna,\n\nsee the attached file.\n\nRegards",
           extra=(), boundary="----=_Part_0_1", **kw):
    """A plain mail: a text part then the given ready-made parts."""
    return headers(sender, ANNA, subject, date(day), msgid,
                   'Content-Type: multipart/mixed; boundary="%s"' % boundary, *extra, **kw) + [""] + \
        multipart(boundary, [text_part(body)] + attachments)


MAILS = {}


def mail(name, eol=CRLF, final_eol=True):
    def register(build):
        MAILS[name] = (build, eol, final_eol)
        return build
    return register


# --- names and charsets ---------------------------------------------------------------------------

@mail("01-rfc2231-utf8-cyrillic")
def _():
    name = "Отчёт за октябрь.pdf"
    return simple("=?utf-8?B?%s?= <olga.ivanova@example.ru>" % base64.b64encode("Ольга Иванова".encode()).decode(),
                  ew("Отчёт за октябрь", "utf-8"), 2, "a1b2c3.1@example.ru",
                  [part(["Content-Type: application/pdf; name*=utf-8''" + pct(name),
                         "Content-Disposition: attachment; filename*=utf-8''" + pct(name),
                         "Content-Transfer-Encoding: base64"], b64(pdf("Report October")))])


@mail("02-rfc2231-continuations-japanese")
def _():
    name = "会議の議事録_2026年11月.txt"
    # Cut between two %XX escapes but inside a character, as long names are cut by byte count.
    encoded = pct(name)
    cut = [encoded[:21], encoded[21:62], encoded[62:]]
    assert encoded[21] == encoded[62] == "%"
    return simple("Yamada Taro <taro.yamada@example.jp>", ew("議事録をお送りします", "utf-8"), 3,
                  "20261103.77@example.jp",
                  [part(["Content-Type: text/plain; charset=utf-8",
                         "Content-Disposition: attachment;",
                         "\tfilename*0*=utf-8''" + cut[0] + ";",
                         "\tfilename*1*=" + cut[1] + ";",
                         "\tfilename*2*=" + cut[2],
                         "Content-Transfer-Encoding: base64"],
                        b64(text_file("議事録", "出席者: 山田, 佐藤", "決定事項: 予算承認")))])


@mail("03-rfc2231-no-charset", eol=LF)
def _():
    return simple("Pierre Martin <pierre.martin@example.fr>", "Two reports", 4, "p.martin.443@example.fr",
                  [part(["Content-Type: text/csv",
                         "Content-Disposition: attachment; filename*=''quarterly%20report%20Q3.csv",
                         "Content-Transfer-Encoding: base64"],
                        b64(text_file("region;sales", "north;1200", "south;950"))),
                   part(["Content-Type: application/octet-stream",
                         "Content-Disposition: attachment;",
                         ' filename*0="annual-report-for-the-board-of-";',
                         ' filename*1="directors-2026.zip"',
                         "Content-Transfer-Encoding: base64"], b64(noise("annual-zip", 900)))])


@mail("04-rfc2231-latin1-lang")
def _():
    return simple("=?iso-8859-1?Q?C=E9line_Dub=F3is?= <celine@example.fr>", "CV", 4,
                  "cv-celine@example.fr",
                  [part(["Content-Type: application/msword",
                         "Content-Disposition: attachment; filename*=iso-8859-1'fr'" +
                         pct("Résumé Céline.doc", "iso-8859-1"),
                         "Content-Transfer-Encoding: base64"], b64(noise("resume-doc", 1500))),
                   part(["Content-Type: text/plain; charset=windows-1252",
                         "Content-Disposition: attachment; filename*=windows-1252''" +
                         pct("€ Gehälter – 2026.txt", "windows-1252"),
                         "Content-Transfer-Encoding: quoted-printable"],
                        qp(text_file("Gehälter 2026: 4.200 €", "Prämie – 300 €", charset="windows-1252")))])


@mail("05-ew-in-quoted-filename")
def _():
    # The form a widely used desktop client writes: RFC 2047 words inside the quoted string.
    name = "Отчёт.pdf"
    word = ew(name, "utf-8")
    return headers('"Petrov, Ivan" <ivan.petrov@example.ru>', ANNA, ew("Отчёт", "utf-8"), date(5),
                   "0005.petrov@example.ru", "X-Mailer: Desktop Mail 16.0",
                   "Content-Type: multipart/mixed;",
                   '\tboundary="----=_NextPart_000_0005_01DB2F1A.6E1C8A70"') + [""] + \
        multipart("----=_NextPart_000_0005_01DB2F1A.6E1C8A70",
                  [text_part("Добрый день!\n\nОтчёт во вложении.", "utf-8", "8bit"),
                   part(['Content-Type: application/pdf;\tname="%s"' % word,
                         'Content-Disposition: attachment;\tfilename="%s"' % word,
                         "Content-Transfer-Encoding: base64"], b64(pdf("Otchet"))),
                   part(['Content-Type: image/png; name="%s"' % ew("Схема подключения.png", "utf-8", "Q"),
                         'Content-Disposition: attachment; filename="%s"' % ew("Схема подключения.png", "utf-8", "Q"),
                         "Content-Transfer-Encoding: base64"], b64(png(6, 4, lambda x, y: (40 * x, 60 * y, 200))))],
                  preamble=["This is a multi-part message in MIME format.", ""])


@mail("06-ew-iso-8859-1-q")
def _():
    name = "Présentation finale.ppt"
    return simple("=?iso-8859-1?Q?J=E9r=F4me_Lef=E8vre?= <jerome@example.fr>",
                  ew("Présentation à relire", "iso-8859-1", "Q"), 6, "jl-2026-11-06@example.fr",
                  [b64_part("application/vnd.ms-powerpoint", noise("ppt", 2000), ew(name, "iso-8859-1", "Q"))])


@mail("07-ew-windows-1252")
def _():
    return simple(ew("Zoë O’Brien", "windows-1252", "Q") + " <zoe@example.ie>",
                  ew("€ budget – final “version”", "windows-1252", "Q"), 6, "zob.991@example.ie",
                  [b64_part("application/vnd.ms-excel", noise("xls-budget", 1800),
                            ew("€ budget – final.xls", "windows-1252", "Q")),
                   b64_part("text/plain", text_file("“quoted” – notes", charset="windows-1252"),
                            ew("Zoë’s notes.txt", "windows-1252", "B"))])


@mail("08-ew-windows-1251")
def _():
    return simple(ew("Сергей Кузнецов", "windows-1251") + " <s.kuznetsov@example.ru>",
                  ew("Договор поставки", "windows-1251"), 9, "dogovor-44@example.ru",
                  [b64_part("application/pdf", pdf("Dogovor"), ew("Договор №44.pdf", "windows-1251")),
                   b64_part("application/vnd.ms-excel", noise("sheet-xls", 1200),
                            ew("Спецификация.xls", "windows-1251", "Q"))])


@mail("09-ew-koi8-r", eol=LF)
def _():
    return simple(ew("Наталья Смирнова", "koi8-r") + " <n.smirnova@example.ru>",
                  ew("Счёт на оплату", "koi8-r"), 10, "schet-2026-11@example.ru",
                  [b64_part("application/pdf", pdf("Schet"), ew("Счёт на оплату.pdf", "koi8-r")),
                   b64_part("text/plain", text_file("Реквизиты", charset="koi8-r"),
                            ew("Реквизиты.txt", "koi8-r", "Q"))])


@mail("10-ew-hebrew")
def _():
    return simple(ew("דוד כהן", "iso-8859-8") + " <david.cohen@example.co.il>",
                  ew("חשבונית לחודש נובמבר", "iso-8859-8"), 10, "cohen.1110@example.co.il",
                  [b64_part("application/pdf", pdf("Heshbonit"), ew("חשבונית.pdf", "iso-8859-8")),
                   b64_part("image/png", png(5, 5, lambda x, y: (200, 50 * x, 50 * y)),
                            ew("תמונה של המשרד.png", "iso-8859-8", "Q"))])


@mail("11-ew-iso-2022-jp")
def _():
    return simple(ew("佐藤花子", "iso-2022-jp") + " <hanako.sato@example.jp>",
                  ew("見積書の送付", "iso-2022-jp"), 11, "mitsumori.5501@example.jp",
                  [b64_part("application/pdf", pdf("Mitsumorisho"), ew("見積書.pdf", "iso-2022-jp")),
                   b64_part("application/vnd.ms-excel", noise("jp-xls", 1100),
                            ew("価格表（改訂版）.xls", "iso-2022-jp"))],
                  body="山田様\n\n見積書を添付いたします。")


@mail("12-ew-shift-jis")
def _():
    return simple(ew("鈴木一郎", "shift_jis") + " <ichiro.suzuki@example.jp>",
                  ew("写真を送ります", "shift_jis"), 12, "shashin.20261112@example.jp",
                  [b64_part("image/png", png(8, 3, lambda x, y: (30 * x, 80, 80 * y)),
                            ew("富士山の写真.png", "shift_jis")),
                   b64_part("text/plain", text_file("ソフトウェア表", charset="shift_jis"),
                            ew("ソフト表.txt", "shift_jis", "Q"))])


@mail("13-ew-gb2312", eol=LF)
def _():
    return simple(ew("王小明", "gb2312") + " <xiaoming.wang@example.cn>",
                  ew("会议纪要和报价单", "gbk"), 13, "huiyi.1113@example.cn",
                  [b64_part("application/pdf", pdf("Huiyi jiyao"), ew("会议纪要.pdf", "gb2312")),
                   b64_part("application/vnd.ms-excel", noise("cn-xls", 1300),
                            ew("报价单（最终）.xls", "gbk"))])


@mail("14-ew-split-words")
def _():
    # Long names are cut into several encoded words, each a whole number of characters, over
    # folded lines; the blanks between the words are not part of the name.
    words = " ".join([ew("Коммерческое ", "utf-8"), ew("предложение ", "utf-8"),
                      ew("на 2027 год", "utf-8"), ew(".docx", "utf-8")])
    mixed = [ew("Prix ", "iso-8859-1", "Q"), ew("réduits ", "iso-8859-1", "B"), ew("été.pdf", "utf-8", "Q")]
    return simple("Marketing <marketing@example.com>", "Offers", 16, "offers-77@example.com",
                  [part(["Content-Type: application/vnd.openxmlformats-officedocument.wordprocessingml.document;",
                         ' name="%s"' % words,
                         "Content-Disposition: attachment;",
                         ' filename="%s"' % words,
                         "Content-Transfer-Encoding: base64"], b64(noise("docx-offer", 2500))),
                   part(['Content-Type: application/pdf; name="' + mixed[0],
                         " " + mixed[1],
                         "\t" + mixed[2] + '"',
                         "Content-Disposition: attachment",
                         "Content-Transfer-Encoding: base64"], b64(pdf("Prix reduits")))])


# --- senders, subjects and dates -------------------------------------------------------------------

@mail("15-from-quoted-encoded-words")
def _():
    return simple("=?utf-8?Q?=22Dupont=2C?= =?utf-8?Q?_Jean=22?= <jean.dupont@example.fr>",
                  "=?utf-8?Q?Re=3A_r=C3=A9union_de_lundi?=", 16, "jd.re.1@example.fr",
                  [b64_part("text/calendar", text_file("BEGIN:VCALENDAR", "VERSION:2.0", "END:VCALENDAR"),
                            "invite.ics")])


@mail("16-mailer-daemon")
def _():
    return simple("MAILER DAEMON <>", "Warning: could not send message for past 4 hours", 17,
                  "warn.8812@mail.example.net",
                  [b64_part("text/plain", text_file("Reporting-MTA: dns; mail.example.net"), "details.txt")],
                  body="This is a warning message only.\nYou do not need to resend your message.")


@mail("17-from-address-only", eol=LF)
def _():
    return simple("scanner@office.example.com", "Scanned document", 17, "scan.0001@office.example.com",
                  [b64_part("application/pdf", pdf("Scan 0001"), "scan0001.pdf")],
                  body="Scanned by MFP-4410.", mime=False)


@mail("18-no-from")
def _():
    return ["To: " + ANNA, "Subject: Draft without sender", "Date: " + date(18),
            "Message-ID: <draft.1@corvina-mail.example>", "MIME-Version: 1.0",
            'Content-Type: multipart/mixed; boundary="b18"', ""] + \
        multipart("b18", [text_part("Draft."), b64_part("text/plain", text_file("draft notes"), "draft.txt")])


@mail("19-no-date")
def _():
    return ["From: Tom Keller <tom.keller@example.com>", "To: " + ANNA, "Subject: No date here",
            "Message-ID: <nodate.1@example.com>", "MIME-Version: 1.0",
            'Content-Type: multipart/mixed; boundary="b19"', ""] + \
        multipart("b19", [text_part("No date."), b64_part("application/pdf", pdf("No date"), "undated.pdf")])


@mail("20-bad-date", eol=LF)
def _():
    return ["From: Tom Keller <tom.keller@example.com>", "To: " + ANNA, "Subject: Odd date",
            "Date: next Tuesday-ish, around 25:61", "Message-ID: <baddate.1@example.com>",
            "MIME-Version: 1.0", 'Content-Type: multipart/mixed; boundary="b20"', ""] + \
        multipart("b20", [text_part("Odd date."), b64_part("text/plain", text_file("when?"), "when.txt")])


@mail("21-no-from-no-date")
def _():
    return ["To: " + ANNA, "Subject: =?utf-8?B?" + base64.b64encode("Entwurf – ohne Absender".encode()).decode() + "?=",
            "Message-ID: <draft.2@corvina-mail.example>", "MIME-Version: 1.0",
            'Content-Type: multipart/mixed; boundary="b21"', ""] + \
        multipart("b21", [text_part("Entwurf."), b64_part("text/plain", text_file("Notizen"), "Notizen.txt")])


# --- transfer encodings ----------------------------------------------------------------------------

@mail("22-qp-text")
def _():
    text = text_file("Meeting notes 2026-11-20",
                     "Decision: budget=approved, a=b+c holds",
                     "Attendees: Müller, Özdemir, Françoise   ",   # ends in blanks
                     "A very long line that goes on and on past seventy-six columns so that the "
                     "encoder has to break it with a soft line break to fit the limit.",
                     "\tTabbed line\t",
                     "Ende.")
    return simple("Tom Keller <tom.keller@example.com>", "Notes (quoted-printable)", 20, "qp.1@example.com",
                  [part(["Content-Type: text/plain; charset=utf-8; name=notes.txt",
                         "Content-Disposition: attachment; filename=notes.txt",
                         "Content-Transfer-Encoding: quoted-printable"], qp(text, lower=True)),
                   part(["Content-Type: text/html; charset=utf-8; name=notes.html",
                         "Content-Disposition: attachment; filename=notes.html",
                         "Content-Transfer-Encoding: quoted-printable"],
                        qp(text_file('<p style="color:red">Müller = approved</p>')))])


@mail("23-qp-binary", eol=LF)
def _():
    data = bytes(range(0, 256)).replace(b"\n", b"").replace(b"\r", b"")
    lines = []
    current = ""
    for byte in data:  # a binary file in quoted-printable: no hard line break at all
        cell = chr(byte) if 33 <= byte <= 126 and byte != 0x3D else "=%02X" % byte
        if len(current) + len(cell) > 75:
            lines.append(current + "=")
            current = ""
        current += cell
    lines.append(current)
    return simple("Build bot <build@example.com>", "Firmware blob", 21, "fw.1@example.com",
                  [part(["Content-Type: application/octet-stream; name=firmware.bin",
                         "Content-Disposition: attachment; filename=firmware.bin",
                         "Content-Transfer-Encoding: quoted-printable"], lines)])


@mail("24-base64-no-padding", eol=LF)
def _():
    one = pdf("Missing padding")   # its base64 ends in "="; that is cut off
    two = noise("pad-two", 301)    # ends in "==", cut off too
    lines_one = b64(one)
    lines_one[-1] = lines_one[-1].rstrip("=")
    lines_two = b64(two)
    lines_two[-1] = lines_two[-1].rstrip("=")
    assert len(one) % 3 and len(two) % 3
    return simple("Old gateway <gw@legacy.example.org>", "Base64 without padding", 22, "pad.1@legacy.example.org",
                  [part(["Content-Type: application/pdf; name=padding.pdf",
                         "Content-Disposition: attachment; filename=padding.pdf",
                         "Content-Transfer-Encoding: base64"], lines_one),
                   part(["Content-Type: application/octet-stream; name=blob.bin",
                         "Content-Disposition: attachment; filename=blob.bin",
                         "Content-Transfer-Encoding: base64"], lines_two)])


@mail("25-base64-odd-lines")
def _():
    data = png(12, 10, lambda x, y: (20 * x, 25 * y, 128))
    odd = b64(noise("odd-lines", 1000), 100)
    spaced = [" " + line + "  " if i % 3 == 0 else line + "\t" for i, line in enumerate(b64(data, 64))]
    spaced.insert(2, "")           # a blank line inside the base64 text
    return simple("Camera upload <upload@example.com>", "Base64 line lengths", 23, "b64.1@example.com",
                  [part(["Content-Type: image/png; name=chart.png",
                         "Content-Disposition: attachment; filename=chart.png",
                         "Content-Transfer-Encoding: base64"], spaced),
                   part(["Content-Type: application/octet-stream; name=long-lines.bin",
                         "Content-Disposition: attachment; filename=long-lines.bin",
                         "Content-Transfer-Encoding: base64"], odd),
                   part(["Content-Type: text/plain; name=short-lines.txt",
                         "Content-Disposition: attachment; filename=short-lines.txt",
                         "Content-Transfer-Encoding: base64"], b64(text_file("short lines", "of base64"), 20))])


@mail("26-x-uuencode")
def _():
    data = pdf("Uuencoded")
    return simple("Unix user <user@old-unix.example.edu>", "uuencoded report", 23, "uu.1@old-unix.example.edu",
                  [part(["Content-Type: application/pdf; name=report.pdf",
                         "Content-Disposition: attachment; filename=report.pdf",
                         "Content-Transfer-Encoding: x-uuencode"], uu(data, "report.pdf"))])


@mail("27-uuencode-backticks", eol=LF)
def _():
    data = noise("uu-backtick", 500) + bytes(90)   # zeros: written as "`" here
    return simple("Unix user <user@old-unix.example.edu>", "uuencode with backticks", 24, "uu.2@old-unix.example.edu",
                  [part(["Content-Type: application/octet-stream; name=data.bin",
                         "Content-Disposition: attachment; filename=data.bin",
                         "Content-Transfer-Encoding: uuencode"], uu(data, "data.bin", backtick=True))])


@mail("28-uuencode-stripped-blanks")
def _():
    # Zero bytes are written as blanks by the classic encoder; a mail relay removed the blanks
    # at the ends of the lines, so those lines are shorter than their length character says.
    data = b"header\0\0\0" + bytes(40) + noise("uu-stripped", 200) + bytes(45) + b"tail" + bytes(41) + b"end"
    lines = uu(data, "table.dat")
    stripped = [line.rstrip(" ") if 0 < i < len(lines) - 2 else line for i, line in enumerate(lines)]
    assert stripped != lines
    return simple("Unix user <user@old-unix.example.edu>", "uuencode, blanks lost", 24, "uu.3@old-unix.example.edu",
                  [part(["Content-Type: application/octet-stream; name=table.dat",
                         "Content-Disposition: attachment; filename=table.dat",
                         "Content-Transfer-Encoding: x-uuencode"], stripped)])


@mail("29-7bit-8bit-binary")
def _():
    binary = bytes(b for b in noise("binary-part", 600) if b not in (10, 13))
    return simple("Tom Keller <tom.keller@example.com>", "Three plain encodings", 25, "plain.1@example.com",
                  [part(["Content-Type: text/plain; charset=us-ascii; name=readme.txt",
                         "Content-Disposition: attachment; filename=readme.txt",
                         "Content-Transfer-Encoding: 7bit"], ["Read me first.", "Line two."]),
                   part(["Content-Type: text/plain; charset=utf-8; name=umlaute.txt",
                         "Content-Disposition: attachment; filename=umlaute.txt",
                         "Content-Transfer-Encoding: 8bit"], ["Grüße aus Köln", "Straße – Maß"]),
                   part(["Content-Type: application/octet-stream; name=raw.bin",
                         "Content-Disposition: attachment; filename=raw.bin",
                         "Content-Transfer-Encoding: binary"], [binary])])


# --- special parts, attached and returned messages ----------------------------------------------

@mail("31-tnef-winmail")
def _():
    return simple("Exchange User <user@corp.example.com>", "Budget", 26, "tnef.1@corp.example.com",
                  [part(['Content-Type: application/ms-tnef; name="winmail.dat"',
                         "Content-Transfer-Encoding: base64",
                         'Content-Disposition: attachment; filename="winmail.dat"'], b64(tnef()))],
                  extra=["X-MS-Has-Attach: yes", "X-MS-TNEF-Correlator: <tnef.1@corp.example.com>"])


def inner_message(subject, sender, day, msgid, attachments=(), boundary="inner-1", received=True, body="Inner text."):
    head = [RECEIVED] if received else []
    head += headers(sender, "Team <team@example.com>", subject, date(day, 8, 30), msgid)
    if not attachments:
        return head + ["Content-Type: text/plain; charset=utf-8", "Content-Transfer-Encoding: 8bit", ""] + \
            body.split("\n")
    return head + ['Content-Type: multipart/mixed; boundary="%s"' % boundary, ""] + \
        multipart(boundary, [text_part(body)] + list(attachments))


@mail("32-attached-message")
def _():
    inner = inner_message("Quarterly figures", "Finance <finance@example.com>", 2, "q.fig.1@example.com",
                          body="Figures attached below.\nThanks, Finance")
    return simple("Tom Keller <tom.keller@example.com>", "Fwd: Quarterly figures", 27, "fwd.1@example.com",
                  [rfc822_part(inner)])


@mail("33-attached-two-deep", eol=LF)
def _():
    deepest = inner_message("Site visit", "Site office <site@example.com>", 3, "site.1@example.com",
                            [b64_part("image/png", png(4, 4, lambda x, y: (99, 99, 99)), "site.png")],
                            boundary="deep-2")
    middle = inner_message("Re: Site visit", "Peter Stone <peter@example.com>", 4, "site.2@example.com",
                           [rfc822_part(deepest)], boundary="middle-1", body="See the original below.")
    return simple("Tom Keller <tom.keller@example.com>", "Fwd: Re: Site visit", 27, "fwd.2@example.com",
                  [rfc822_part(middle)])


@mail("34-attached-with-attachments")
def _():
    inner = inner_message(ew("Счёт и акт", "koi8-r"), "Buh <buh@example.ru>", 5, "schet.2@example.ru",
                          [b64_part("application/pdf", pdf("Akt"), "akt.pdf"),
                           b64_part("application/pdf", pdf("Schet 2"), ew("Счёт.pdf", "koi8-r"))])
    return simple("Tom Keller <tom.keller@example.com>", "Fwd: invoice and certificate", 28, "fwd.3@example.com",
                  [b64_part("text/plain", text_file("my comments"), "comments.txt"), rfc822_part(inner)])


@mail("35-forwarded-inline-untitled")
def _():
    inner = ["From: Lisa Wong <lisa.wong@example.com>", "To: Tom Keller <tom.keller@example.com>",
             "Date: " + date(6, 10, 0), "Message-ID: <nosubject.1@example.com>", "MIME-Version: 1.0",
             "Content-Type: text/plain; charset=us-ascii", "", "A mail without a subject line.", ""]
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Fwd:", date(28), "fwd.4@example.com",
                   'Content-Type: multipart/mixed; boundary="fwd-4"') + [""] + \
        multipart("fwd-4", [text_part("-------- Forwarded Message --------"),
                            rfc822_part(inner, disposition="inline"),
                            text_part("-- \nTom")])


@mail("36-related-inline-images")
def _():
    logo = png(10, 4, lambda x, y: (255, 20 * x, 0))
    spacer = png(1, 1, lambda x, y: (255, 255, 255))
    html = '<html><body><img src="cid:logo@corvina"><img src="cid:spacer@corvina"><p>News</p></body></html>'
    related = ['Content-Type: multipart/related; boundary="rel-1"; type="text/html"', ""] + \
        multipart("rel-1", [part(["Content-Type: text/html; charset=utf-8",
                                  "Content-Transfer-Encoding: 7bit"], [html]),
                            part(['Content-Type: image/png; name="logo.png"',
                                  "Content-ID: <logo@corvina>",
                                  'Content-Disposition: inline; filename="logo.png"',
                                  "Content-Transfer-Encoding: base64"], b64(logo)),
                            part(["Content-Type: image/png",            # no file name at all
                                  "Content-ID: <spacer@corvina>",
                                  "Content-Transfer-Encoding: base64"], b64(spacer))])
    return headers("Café Aurora <news@cafe-aurora.example>", ANNA, "Newsletter", date(29), "news.1@cafe-aurora.example",
                   'Content-Type: multipart/mixed; boundary="mix-1"') + [""] + \
        multipart("mix-1", [related, b64_part("application/pdf", pdf("Menu"), "menu.pdf")])


@mail("37-alternative-html-only", eol=LF)
def _():
    alternative = ['Content-Type: multipart/alternative; boundary="alt-1"', ""] + \
        multipart("alt-1", [part(["Content-Type: text/html; charset=utf-8",
                                  "Content-Transfer-Encoding: quoted-printable"],
                                 qp(b"<html><body><p>Only HTML here.</p></body></html>"))])
    return headers("Shop <orders@shop.example>", ANNA, "Your order", date(29, 11), "order.1@shop.example",
                   'Content-Type: multipart/mixed; boundary="mix-2"') + [""] + \
        multipart("mix-2", [alternative, b64_part("application/pdf", pdf("Order 5512"), "order-5512.pdf")])


@mail("38-delivery-report")
def _():
    returned = inner_message("Contract draft", ANNA, 29, "contract.1@corvina-mail.example",
                             [b64_part("application/pdf", pdf("Contract"), "contract.pdf")], boundary="ret-1")
    status = ["Reporting-MTA: dns; mail.corvina-mail.example", "Arrival-Date: " + date(29, 14, 2), "",
              "Final-Recipient: rfc822; nobody@nowhere.example", "Action: failed", "Status: 5.1.1",
              "Diagnostic-Code: smtp; 550 5.1.1 user unknown"]
    return headers("Mail Delivery System <MAILER-DAEMON@mail.corvina-mail.example>", ANNA,
                   "Undelivered Mail Returned to Sender", date(29, 14, 3), "dsn.1@mail.corvina-mail.example",
                   'Content-Type: multipart/report; report-type=delivery-status;',
                   '\tboundary="dsn-1"') + [""] + \
        multipart("dsn-1", [text_part("I'm sorry to have to inform you that your message could not be delivered."),
                            part(["Content-Description: Delivery report", "Content-Type: message/delivery-status"],
                                 status),
                            part(["Content-Description: Undelivered Message", "Content-Type: message/rfc822"],
                                 returned)],
                  preamble=["This is a MIME-encapsulated message.", ""])


# --- broken or unusual structure -------------------------------------------------------------------

@mail("39-missing-close-boundary", final_eol=False)
def _():
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Cut off", date(30), "cut.1@example.com",
                   'Content-Type: multipart/mixed; boundary="cut"') + [""] + \
        multipart("cut", [text_part("The end is missing."),
                          b64_part("application/pdf", pdf("First"), "first.pdf"),
                          b64_part("text/plain", text_file("last part, never closed"), "last.txt")], close=False)


@mail("40-boundary-trailing-blanks")
def _():
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Padded boundaries", date(30, 10), "pad.2@example.com",
                   'Content-Type: multipart/mixed; boundary="padded"') + [""] + \
        multipart("padded", [text_part("Boundaries with blanks after them."),
                             b64_part("application/pdf", pdf("Padded"), "padded.pdf"),
                             b64_part("text/plain", text_file("second"), "second.txt")], pad="   \t ")


@mail("41-preamble-epilogue", eol=LF)
def _():
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Preamble and epilogue", date(30, 11), "pre.1@example.com",
                   'Content-Type: multipart/mixed; boundary="pre"') + [""] + \
        multipart("pre", [text_part("Body."), b64_part("text/csv", text_file("a;b", "1;2"), "table.csv")],
                  preamble=["This is a multi-part message in MIME format.",
                            "--pre-not-a-boundary (a line that only starts like one)", ""],
                  epilogue=["", "This is the epilogue. It is ignored.", "--pre", "still epilogue"])


@mail("42-boundary-never-appears")
def _():
    # The header names a boundary the body never uses (a relay rewrote it): the body is one
    # text, and the parts inside it are not parts of this mail.
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Lost boundary", date(30, 12), "lost.1@example.com",
                   'Content-Type: multipart/mixed; boundary="declared-but-unused"') + [""] + \
        multipart("actually-used", [text_part("Body."), b64_part("application/pdf", pdf("Lost"), "lost.pdf")])


@mail("43-type-without-subtype")
def _():
    return simple("Tom Keller <tom.keller@example.com>", "Type without subtype", 30, "nosub.1@example.com",
                  [part(['Content-Type: application; name="x.pdf"',
                         "Content-Transfer-Encoding: base64"], b64(pdf("No subtype")))])


@mail("44-disposition-without-type", eol=LF)
def _():
    return simple("Tom Keller <tom.keller@example.com>", "Disposition only", 30, "disp.1@example.com",
                  [part(['Content-Disposition: attachment; filename="data.csv"',
                         "Content-Transfer-Encoding: base64"], b64(text_file("x,y", "1,2", "3,4")))])


@mail("45-name-only-in-content-type")
def _():
    return simple("Tom Keller <tom.keller@example.com>", "Name in Content-Type only", 30, "ctname.1@example.com",
                  [part(['Content-Type: application/pdf; name="scan 0002.pdf"',
                         "Content-Transfer-Encoding: base64"], b64(pdf("Scan 0002"))),
                   part(['Content-Type: image/png; name=thumb.png',
                         "Content-Disposition: inline",
                         "Content-Transfer-Encoding: base64"], b64(png(3, 3, lambda x, y: (1, 2, 3))))])


@mail("46-duplicate-names")
def _():
    return simple("Tom Keller <tom.keller@example.com>", "Same names", 30, "dup.1@example.com",
                  [b64_part("text/plain", text_file("first version"), "notes.txt"),
                   b64_part("image/png", png(2, 2, lambda x, y: (0, 0, 255)), "Photo.JPG"),
                   b64_part("text/plain", text_file("second version, longer"), "notes.txt"),
                   b64_part("image/png", png(3, 2, lambda x, y: (255, 0, 0)), "photo.jpg")])


@mail("47-windows-forbidden-chars")
def _():
    def named(name_header, data):
        return part(["Content-Type: application/octet-stream", name_header,
                     "Content-Transfer-Encoding: base64"], b64(data))
    return simple("Tom Keller <tom.keller@example.com>", "Odd names", 30, "odd.1@example.com",
                  [named('Content-Disposition: attachment; filename="Q&A: what?.txt"', text_file("qa")),
                   named('Content-Disposition: attachment; filename="a*b<c>|d.txt"', text_file("star")),
                   named('Content-Disposition: attachment; filename="say \\"hi\\".txt"', text_file("quote")),
                   named('Content-Disposition: attachment; filename="tab\there.txt"', text_file("tab")),
                   named("Content-Disposition: attachment; filename*=utf-8''bell%07ring%1F.txt", text_file("bell")),
                   named("Content-Disposition: attachment; filename*=utf-8''back%5Cslash%2Fpath.txt", text_file("slash")),
                   named('Content-Disposition: attachment; filename="minutes..."', text_file("dots")),
                   named('Content-Disposition: attachment; filename="draft. . "', text_file("dots and blanks")),
                   named('Content-Disposition: attachment; filename="a:b.txt"', text_file("first a_b")),
                   named('Content-Disposition: attachment; filename="a?b.txt"', text_file("second a_b"))])


@mail("48-very-long-names", eol=LF)
def _():
    long_name = "Protokoll der außerordentlichen Mitgliederversammlung " * 5 + "final.pdf"   # 280 chars
    long_name = long_name[:296 - 4] + ".pdf" if len(long_name) < 296 else long_name
    encoded = pct(long_name)
    chunks = [encoded[i:i + 60] for i in range(0, len(encoded), 60)]
    cont = ["Content-Disposition: attachment;"] + \
        [" filename*%d*=%s%s%s" % (i, "utf-8''" if i == 0 else "", c, ";" if i < len(chunks) - 1 else "")
         for i, c in enumerate(chunks)]
    no_ext = "x" * 310
    return simple("Verein <vorstand@verein.example>", "Protokoll", 30, "long.1@verein.example",
                  [part(["Content-Type: application/pdf"] + cont + ["Content-Transfer-Encoding: base64"],
                        b64(pdf("Protokoll"))),
                   part(["Content-Type: application/octet-stream",
                         'Content-Disposition: attachment; filename="%s"' % no_ext,
                         "Content-Transfer-Encoding: base64"], b64(noise("no-ext", 64)))])


@mail("49-raw-utf8-filename")
def _():
    return ["From: Jürgen Müller <juergen@example.de>", "To: " + ANNA, "Subject: Überweisung für März",
            "Date: " + date(30, 15), "Message-ID: <raw8.1@example.de>", "MIME-Version: 1.0",
            'Content-Type: multipart/mixed; boundary="raw8"', ""] + \
        multipart("raw8", [text_part("Hallo Anna, anbei die Überweisung."),
                           part(['Content-Type: application/pdf; name="Überweisung März.pdf"',
                                 'Content-Disposition: attachment; filename="Überweisung März.pdf"',
                                 "Content-Transfer-Encoding: base64"], b64(pdf("Ueberweisung")))])


@mail("50-raw-latin1-filename")
def _():
    name = "Gebühren 5€ für Müller.xls".encode("windows-1252")
    return [b"From: Buchhaltung <buchhaltung@example.de>", "To: " + ANNA, "Subject: Gebuehren",
            "Date: " + date(30, 16), "Message-ID: <raw8.2@example.de>", "MIME-Version: 1.0",
            'Content-Type: multipart/mixed; boundary="raw8b"', ""] + \
        multipart("raw8b", [text_part("Anbei.", "us-ascii", "7bit"),
                            part([b'Content-Type: application/vnd.ms-excel; name="' + name + b'"',
                                  b'Content-Disposition: attachment; filename="' + name + b'"',
                                  "Content-Transfer-Encoding: base64"], b64(noise("gebuehren", 900)))])


@mail("51-leading-blank-line")
def _():
    return ["    "] + simple("Tom Keller <tom.keller@example.com>", "Starts with blanks", 27, "blank.1@example.com",
                              [b64_part("text/plain", text_file("blank start"), "blank.txt")])


@mail("52-mbox-from-line", eol=LF)
def _():
    return ["From tom.keller@example.com Fri Nov 27 10:00:00 2026"] + \
        simple("Tom Keller <tom.keller@example.com>", "From an mbox file", 27, "mbox.1@example.com",
               [b64_part("application/pdf", pdf("Mbox"), "mbox.pdf")], extra=["Status: RO"])


@mail("53-folded-odd-indent")
def _():
    return [RECEIVED, "From: Tom Keller", "        <tom.keller@example.com>", "To: " + ANNA,
            "Subject: A subject folded", "\t\tover three", "   lines",
            "Date: " + date(27, 11), "Message-ID:", " <fold.1@example.com>", "MIME-Version: 1.0",
            "Content-Type: multipart/mixed;", "\t\t\tboundary=", '  "folded-b"', ""] + \
        multipart("folded-b", [text_part("Folded."),
                               part(["Content-Type: application/pdf;", "\tname=", '\t  "folded name.pdf"',
                                     "Content-Disposition:", "   attachment;", "\t filename=", '      "folded name.pdf"',
                                     "Content-Transfer-Encoding:\tbase64"], b64(pdf("Folded")))])


@mail("54-odd-case-headers")
def _():
    return ["FROM: Tom Keller <tom.keller@example.com>", "to: " + ANNA, "SUBJECT: Shouting headers",
            "date: " + date(27, 12), "message-id: <case.1@example.com>", "mime-version: 1.0",
            'content-type: MULTIPART/MIXED; BOUNDARY="CaseB"', ""] + \
        multipart("CaseB", [text_part("Odd case."),
                            part(['CONTENT-TYPE: APPLICATION/PDF; NAME="Upper.PDF"',
                                  'CONTENT-DISPOSITION: ATTACHMENT; FILENAME="Upper.PDF"',
                                  "Content-transfer-ENCODING: BASE64"], b64(pdf("Upper"))),
                            part(['content-type: image/png; name="lower.png"',
                                  'content-disposition: Attachment; Filename="lower.png"',
                                  "content-transfer-encoding: Base64"], b64(png(2, 3, lambda x, y: (7, 7, 7))))])


@mail("55-top-level-attachment")
def _():
    return headers("Scanner <scanner@office.example.com>", ANNA, "Contract", date(27, 13), "top.1@office.example.com",
                   'Content-Type: application/pdf; name="contract.pdf"',
                   'Content-Disposition: attachment; filename="contract.pdf"',
                   "Content-Transfer-Encoding: base64") + [""] + b64(pdf("Top level contract"))


@mail("56-boundary-prefix", eol=LF)
def _():
    # The inner boundary starts with the outer one: only a whole delimiter line ends a part.
    inner = ['Content-Type: multipart/alternative; boundary="abc-1"', ""] + \
        multipart("abc-1", [text_part("plain"), part(["Content-Type: text/html"], ["<p>html</p>"])])
    return headers("Tom Keller <tom.keller@example.com>", ANNA, "Boundary prefixes", date(27, 14), "prefix.1@example.com",
                   'Content-Type: multipart/mixed; boundary="abc"') + [""] + \
        multipart("abc", [inner, b64_part("text/plain", text_file("after the nested part"), "after.txt")])


@mail("57-inline-disposition-pdf")
def _():
    return simple("Mac User <mac.user@example.com>", "Inline PDF", 27, "inline.1@example.com",
                  [part(["Content-Disposition: inline; filename=Flyer.pdf",
                         "Content-Type: application/pdf; x-unix-mode=0644; name=Flyer.pdf",
                         "Content-Transfer-Encoding: base64"], b64(pdf("Flyer"))),
                   text_part("\n\nSent from my desktop")],
                  boundary="Mail=_5C0E1D2A-7B3F-4E8A-9C1D-2F3E4A5B6C7D")


@mail("58-attached-subjects-to-clean", eol=LF)
def _():
    one = inner_message(ew("Протокол: итоги?", "windows-1251"), "Olga <olga@example.ru>", 7, "p.1@example.ru")
    two = inner_message(ew("見積もり<最終>", "shift_jis"), "Taro <taro@example.jp>", 8, "p.2@example.jp")
    three = inner_message("Re: Q3 figures / draft...", "Finance <finance@example.com>", 9, "p.3@example.com")
    return simple("Tom Keller <tom.keller@example.com>", "Three attached mails", 27, "three.1@example.com",
                  [rfc822_part(one), rfc822_part(two), rfc822_part(three)])


# --- files that are no mail --------------------------------------------------------------------------

RAW_FILES = {
    "30-empty.eml": b"",
    "zz-not-a-mail.eml": png(16, 16, lambda x, y: (16 * x, 16 * y, 128)),
}


def render(lines, eol, final_eol):
    out = eol.join(line if isinstance(line, bytes) else line.encode("utf-8") for line in lines)
    return out + eol if final_eol else out


def main():
    for old in os.listdir(HERE):
        if old.endswith(".eml"):
            os.remove(os.path.join(HERE, old))
    for name, (build, eol, final_eol) in sorted(MAILS.items()):
        with open(os.path.join(HERE, name + ".eml"), "wb") as f:
            f.write(render(build(), eol, final_eol))
    for name, data in RAW_FILES.items():
        with open(os.path.join(HERE, name), "wb") as f:
            f.write(data)
    print("%d mails and %d other files written to %s" % (len(MAILS), len(RAW_FILES), HERE))


if __name__ == "__main__":
    main()
