#!/usr/bin/env python3
"""Writes the sample profile's mailbox (samples/profile/mailbox/*.eml).

Run once by hand; the .eml files it writes are kept in the tree. The attachments are real,
tiny files made here without any imaging library: a PNG (zlib), a baseline JPEG whose 8x8
blocks are solid colours (so only DC coefficients are coded), a one-page PDF with a correct
cross-reference table and plain text. The wire format is CRLF, as mail clients export it.
"""
import base64
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
MAILBOX = os.path.join(HERE, "profile", "mailbox")


# --- tiny real files -------------------------------------------------------------------------

def png(width, height, pixel):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))
    rows = b"".join(b"\0" + b"".join(bytes(pixel(x, y)) for x in range(width))
                    for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def jpeg(blocks):
    """blocks: rows of (r, g, b) colours, one per 8x8 block. Quantisation is all ones."""
    height, width = 8 * len(blocks), 8 * len(blocks[0])

    def segment(marker, data):
        return struct.pack(">BBH", 0xFF, marker, len(data) + 2) + data

    # One DC table: categories 0..11, all with 4-bit codes. One AC table: only end-of-block.
    dc_codes = {cat: (cat, 4) for cat in range(12)}
    dht = (bytes([0x00]) + bytes([0, 0, 0, 12] + [0] * 12) + bytes(range(12)) +
           bytes([0x10]) + bytes([1] + [0] * 15) + bytes([0x00]))
    bits = []

    def put(value, length):
        bits.extend((value >> (length - 1 - i)) & 1 for i in range(length))

    pred = [0, 0, 0]
    for row in blocks:
        for (r, g, b) in row:
            ycc = (0.299 * r + 0.587 * g + 0.114 * b,
                   128 - 0.168736 * r - 0.331264 * g + 0.5 * b,
                   128 + 0.5 * r - 0.418688 * g - 0.081312 * b)
            for c, level in enumerate(ycc):
                dc = round(8 * (level - 128))  # DC of a flat block after the level shift
                diff, pred[c] = dc - pred[c], dc
                cat = abs(diff).bit_length()
                put(*dc_codes[cat])
                if cat:
                    put(diff if diff > 0 else diff + (1 << cat) - 1, cat)
                put(0, 1)  # end of block: every AC coefficient is zero
    bits.extend([1] * (-len(bits) % 8))
    data = bytearray()
    for i in range(0, len(bits), 8):
        byte = int("".join(map(str, bits[i:i + 8])), 2)
        data += bytes([byte, 0]) if byte == 0xFF else bytes([byte])
    return (b"\xFF\xD8" +
            segment(0xE0, b"JFIF\0\x01\x01\0\0\x01\0\x01\0\0") +
            segment(0xDB, b"\0" + bytes([1] * 64)) +
            segment(0xC0, struct.pack(">BHHB", 8, height, width, 3) +
                    b"\x01\x11\x00\x02\x11\x00\x03\x11\x00") +
            segment(0xC4, dht) +
            segment(0xDA, b"\x03\x01\x00\x02\x00\x03\x00\x00\x3F\x00") +
            bytes(data) + b"\xFF\xD9")


def pdf(line):
    content = b"BT /F1 18 Tf 40 100 Td (" + line.encode() + b") Tj ET"
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 300 144] "
        b"/Resources << /Font << /F1 4 0 R >> >> /Contents 5 0 R >>",
        b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
        b"<< /Length %d >>\nstream\n" % len(content) + content + b"\nendstream",
    ]
    out = bytearray(b"%PDF-1.4\n")
    offsets = []
    for n, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj\n" % n + body + b"\nendobj\n"
    xref = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(objects) + 1)
    out += b"".join(b"%010d 00000 n \n" % o for o in offsets)
    out += b"trailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (
        len(objects) + 1, xref)
    return bytes(out)


# --- MIME ------------------------------------------------------------------------------------

ME = "Anna Berger <anna.berger@example.com>"
TOM = "Tom Keller <tom.keller@example.com>"


def b64_lines(data):
    text = base64.b64encode(data).decode()
    return "\n".join(text[i:i + 76] for i in range(0, len(text), 76))


def attachment(content_type, name, data, disposition="attachment", extra=""):
    filename = f'filename="{name}"' if name.isascii() else \
        "filename*=UTF-8''" + "".join(c if c.isalnum() or c in ".-_" else
                                      "".join(f"%{b:02X}" for b in c.encode()) for c in name)
    ctype_name = f'; name="{name}"' if name.isascii() else ""
    return (f"Content-Type: {content_type}{ctype_name}\nContent-Transfer-Encoding: base64\n"
            f"Content-Disposition: {disposition}; {filename}\n{extra}\n{b64_lines(data)}\n")


def text_part(text, subtype="plain", charset="utf-8"):
    return (f"Content-Type: text/{subtype}; charset={charset}\n"
            f"Content-Transfer-Encoding: 8bit\n\n{text}\n")


def multipart(subtype, boundary, parts, params=""):
    body = "".join(f"--{boundary}\n{p}" for p in parts) + f"--{boundary}--\n"
    return f'Content-Type: multipart/{subtype}; boundary="{boundary}"{params}\n\n' \
           f"This is a multi-part message in MIME format.\n\n{body}"


def mail(name, sender, subject, date, mime, to=ME, msg_id=None):
    head = (f"From: {sender}\nTo: {to}\nSubject: {subject}\nDate: {date}\n"
            f"Message-ID: <{msg_id or name.replace('/', '-')}@mail.example.com>\n"
            "MIME-Version: 1.0\n")
    path = os.path.join(MAILBOX, name + ".eml")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write((head + mime).replace("\n", "\r\n").encode("utf-8"))


def main():
    sky = png(12, 8, lambda x, y: (40 + 10 * y, 120 + 8 * x, 220))
    logo = png(8, 8, lambda x, y: (200, 30, 30) if (x + y) % 2 else (250, 250, 250))
    holiday = jpeg([[(70, 140, 230), (255, 200, 60)], [(230, 210, 160), (20, 90, 180)]])

    mail("01-invoice", TOM, "Invoice November", "Mon, 02 Nov 2026 09:15:00 +0100",
         multipart("mixed", "b01", [
             text_part("Hi Anna,\n\nplease find the November invoice attached.\n\nTom"),
             attachment("application/pdf", "invoice.pdf", pdf("Invoice 2026-1187: 420.00 EUR"))]))
    mail("02-holiday", "=?ISO-8859-1?Q?J=FCrgen_M=FCller?= <juergen.mueller@example.org>",
         "=?UTF-8?B?" + base64.b64encode("Urlaubsfotos – Strand & Meer".encode()).decode() + "?=",
         "Thu, 05 Nov 2026 18:42:10 +0100",
         multipart("mixed", "b02", [
             "Content-Type: text/plain; charset=iso-8859-1\n"
             "Content-Transfer-Encoding: quoted-printable\n\n"
             "Hallo Anna,\n\nzwei Bilder vom Strand. Gr=FC=DFe!\n",
             attachment("image/jpeg", "holiday.jpg", holiday),
             attachment("image/png", "beach.PNG", sky)]))
    mail("03-notes", TOM, "Meeting notes and final report", "Tue, 10 Nov 2026 14:05:33 +0100",
         multipart("mixed", "b03", [
             text_part("Notes from today and the final report.\n"),
             attachment("text/plain", "notes.txt",
                        b"Meeting 2026-11-10\r\n- budget approved\r\n- next review in December\r\n"),
             attachment("application/pdf", "report.final.pdf", pdf("Final report Q4"))]))
    html = ('<html><head><style>p { color: #333; }</style></head><body>'
            '<h1>Café News</h1><p>Our new logo: <img src="cid:logo@example.org"></p>'
            '<p>Opening hours &amp; prices are in the attached price list.</p></body></html>')
    mail("04-newsletter", "Café Aurora <news@aurora.example.org>",
         "=?UTF-8?Q?Caf=C3=A9_Aurora_newsletter?=", "Sat, 14 Nov 2026 08:00:00 +0000",
         multipart("mixed", "b04-outer", [
             multipart("related", "b04-rel", [
                 text_part(html, "html"),
                 attachment("image/png", "logo.png", logo, "inline",
                            "Content-ID: <logo@example.org>\n")], '; type="text/html"'),
             attachment("text/plain", "prices.txt", b"Espresso 2.10\nCappuccino 3.20\n")]))
    mail("05-undeliverable", "Mail Delivery Subsystem <MAILER-DAEMON@mail.example.com>",
         "Undelivered Mail Returned to Sender", "Tue, 17 Nov 2026 11:20:45 +0100",
         multipart("report", "b05", [
             text_part("Your message to nobody@invalid.example could not be delivered.\n"
                       "The recipient's domain does not exist."),
             "Content-Type: message/delivery-status\n\n"
             "Reporting-MTA: dns; mail.example.com\n\n"
             "Final-Recipient: rfc822; nobody@invalid.example\nAction: failed\n"
             "Status: 5.1.2\n",
             "Content-Type: text/rfc822-headers\n\n"
             f"From: {ME}\nTo: nobody@invalid.example\nSubject: Lunch?\n"],
             "; report-type=delivery-status"))
    mail("06-lunch", TOM, "Lunch on Friday?", "Fri, 20 Nov 2026 12:30:00 +0100",
         text_part("Shall we try the new place around the corner on Friday?\n\nTom"))
    # Received in the minute the simulator's run starts (22 Nov 2026, 09:00): the start-up copy
    # by file type takes mails from that minute on, so this PDF is the one it copies. It must
    # stay the newest Inbox file, as the sweep walks from the newest mail and stops at the
    # first older one.
    mail("07-receipt", "Shop Orders <orders@shop.example.net>", "Receipt 55-2079",
         "Sun, 22 Nov 2026 09:00:00 +0100",
         multipart("mixed", "b07", [
             text_part("Your receipt for order 55-2079 is attached."),
             attachment("application/pdf", "receipt-55-2079.pdf",
                        pdf("Receipt 55-2079: 38.90 EUR"))]))
    mail("new/01-order", "Shop Orders <orders@shop.example.net>", "Order confirmation 55-2081",
         "Sat, 21 Nov 2026 16:10:00 +0100",
         multipart("mixed", "n01", [
             text_part("Thank you for your order. The confirmation is attached."),
             attachment("application/pdf", "order-55-2081.pdf", pdf("Order 55-2081 confirmed"))]))
    mail("new/02-sizes", TOM, "Size table", "Sat, 21 Nov 2026 17:45:00 +0100",
         multipart("mixed", "n02", [
             text_part("The size table you asked for (name with umlauts on purpose)."),
             attachment("text/plain", "Größen Übersicht.txt", b"S 36\nM 38\nL 40\n")]))


if __name__ == "__main__":
    main()
