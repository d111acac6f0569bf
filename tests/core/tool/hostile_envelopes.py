#!/usr/bin/env python3
"""Writes a corpus of hostile envelopes for the envelope reader.

usage: hostile_envelopes.py OUTDIR WQ_TOOL

Two envelopes made by the wq tool (password "pw") are the starting point;
every other file breaks them on purpose: truncations, bad Base64, duplicated
and missing elements, entity bombs and external entities, floods of
attributes, elements, names and text, huge salts and counts, and tampered
classic and authenticated cipher texts. OUTDIR/manifest.txt lists each file
with what the reader must do with it: "opens", "refused" (its shape is
refused before any password is asked) or "wrong" (a sound shape whose
cipher text fails to open).
"""

import base64
import os
import re
import subprocess
import sys

MIB = 1024 * 1024


def main():
    out, tool = sys.argv[1], sys.argv[2]
    os.makedirs(out, exist_ok=True)
    password = os.path.join(out, "password")
    with open(password, "w") as f:
        f.write("pw\n")
    document = os.path.join(out, "document.xml")
    with open(document, "w") as f:
        f.write("<ledger>" + "".join("<row n='%d'>Caf\u00e9 &amp; co</row>\n" % i for i in range(2000)) + "</ledger>")

    def sealed(extra):
        target = os.path.join(out, "base.enc")
        subprocess.run([tool, "encrypt", *extra, "--password-file", password, document, target], check=True)
        with open(target, "rb") as f:
            data = f.read()
        os.remove(target)
        return data

    classic = sealed(["--classic"])
    authenticated = sealed(["--iterations", "1000", "--insecure"])
    manifest = []

    def put(name, data, outcome="refused"):
        with open(os.path.join(out, name), "wb") as f:
            f.write(data)
        manifest.append((name, outcome))

    def value(envelope):
        start = envelope.index(b"<CipherValue>") + len(b"<CipherValue>")
        return start, envelope.index(b"</CipherValue>")

    def replaced(envelope, old, new, count=1):
        assert old in envelope, old
        return envelope.replace(old, new, count)

    def with_value(envelope, text):
        start, end = value(envelope)
        return envelope[:start] + text + envelope[end:]

    def flipped_iv(envelope, byte_index):
        """The classic envelope with one bit of its IV (its value's first 24 characters) changed."""
        start, end = value(envelope)
        iv = bytearray(base64.b64decode(envelope[start : start + 24]))
        iv[byte_index] ^= 0x01
        return with_value(envelope, base64.b64encode(bytes(iv)) + envelope[start + 24 : end])

    root = classic.index(b"<EncryptedData")
    body = classic[root:]
    insert_at = classic.index(b"<CipherData>")

    put("control-classic.enc", classic, "opens")
    put("control-authenticated.enc", authenticated, "opens")
    # White space may stand between elements, in any amount the size allows.
    put("whitespace-10mb.enc", classic[:insert_at] + b" \n" * (5 * MIB) + classic[insert_at:], "opens")

    # Truncations.
    put("empty.enc", b"")
    put("truncated-half.enc", classic[: len(classic) // 2])
    put("truncated-last-byte.enc", classic[:-1])
    put("truncated-in-head.enc", classic[:100])

    # Bad Base64.
    start, end = value(classic)
    put("base64-bad-character.enc", classic[: start + 100] + b"!" + classic[start + 101 :])
    put("base64-padding-inside.enc", classic[: start + 100] + b"=" + classic[start + 101 :])
    put("base64-not-ascii.enc", classic[: start + 100] + "\u00e9".encode() + classic[start + 102 :])
    # The IV's last character before "==" carries four unused bits, all zero.
    alphabet = b"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"
    odd = alphabet[alphabet.index(classic[start + 21]) ^ 1]
    put("base64-unused-bits.enc", classic[: start + 21] + bytes([odd]) + classic[start + 22 :])
    put("base64-iv-short.enc", classic[: start + 20] + classic[start + 24 :])
    put("base64-salt-bad.enc", replaced(classic, b"<Specified>", b"<Specified>!"))

    # Duplicated and missing elements.
    cipher_data = classic[insert_at : classic.index(b"</EncryptedData>")]
    put("duplicate-cipher-data.enc", replaced(classic, b"</CipherData>", b"</CipherData>" + cipher_data))
    put("duplicate-cipher-value.enc", replaced(classic, b"</CipherValue>", b"</CipherValue><CipherValue>AAAA</CipherValue>"))
    put("duplicate-method.enc", replaced(classic, b"<ds:KeyInfo", re.search(rb"<EncryptionMethod[^>]*/>", classic).group(0) + b"<ds:KeyInfo"))
    put("duplicate-salt.enc", replaced(classic, b"</Salt>", b"</Salt><Salt><Specified>AAAAAAAAAAA=</Specified></Salt>"))
    put("duplicate-count.enc", replaced(classic, b"<KeyLength>", b"<IterationCount>1</IterationCount><KeyLength>"))
    put("missing-salt.enc", re.sub(rb"<Salt>.*?</Salt>", b"", classic))
    put("missing-count.enc", re.sub(rb"<IterationCount>.*?</IterationCount>", b"", classic))
    put("missing-method.enc", re.sub(rb"<EncryptionMethod[^>]*/>", b"", classic))
    put("missing-cipher-value.enc", re.sub(rb"<CipherValue>.*?</CipherValue>", b"", classic, flags=re.S))
    put("cipher-reference.enc", re.sub(rb"<CipherValue>.*?</CipherValue>",
                                       b"<CipherReference URI='file:///etc/passwd'/>", classic, flags=re.S))
    put("second-root.enc", classic + body)
    put("not-an-envelope.enc", b"<?xml version='1.0'?><ledger><row/></ledger>")

    # Entities: a bomb, an external entity, a parameter entity.
    laughs = b"<!ENTITY l0 'lol'>" + b"".join(b"<!ENTITY l%d '%s'>" % (i, b"&l%d;" % (i - 1) * 10) for i in range(1, 10))
    put("entity-bomb.enc", b"<?xml version='1.0'?><!DOCTYPE EncryptedData [" + laughs + b"]>"
        + replaced(body, b"<Specified>", b"<Specified>&l9;"))
    put("external-entity.enc", b"<?xml version='1.0'?><!DOCTYPE EncryptedData [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>"
        + replaced(body, b"<Specified>", b"<Specified>&x;"))
    put("parameter-entity.enc", b"<!DOCTYPE EncryptedData [<!ENTITY % p SYSTEM 'http://127.0.0.1/p.dtd'> %p;]>" + body)
    put("undeclared-entity.enc", replaced(classic, b"<Specified>", b"<Specified>&x;"))

    # Floods: attributes, elements, nesting, names, values, comments, text.
    # Long names, values, comments and sections in elements the reader does
    # not use are well-formed XML: read past quickly, and the envelope opens.
    def attributes(count):
        return b" ".join(b"a%d=''" % i for i in range(count))
    put("attribute-flood-10mb.enc", replaced(classic, b"MimeType=", attributes(900000) + b" MimeType="))
    put("duplicate-attributes.enc", replaced(classic, b"MimeType=", b"a='' " * 20 + b"MimeType="))
    put("namespace-flood.enc", replaced(classic, b"MimeType=",
                                        b" ".join(b"xmlns:n%d='urn:%d'" % (i, i) for i in range(200000)) + b" MimeType="))
    put("element-flood-10mb.enc", classic[:insert_at] + b"<x/>" * (10 * MIB // 4) + classic[insert_at:])
    put("nesting-10mb.enc", classic[:insert_at] + b"<x>" * (5 * MIB // 3) + b"</x>" * (5 * MIB // 4) + classic[insert_at:])
    put("long-name-10mb.enc", classic[:insert_at] + b"<" + b"n" * (10 * MIB) + b"/>" + classic[insert_at:], "opens")
    put("long-attribute-10mb.enc", replaced(classic, b"MimeType=", b"a='" + b"v" * (10 * MIB) + b"' MimeType="), "opens")
    put("long-algorithm-10mb.enc", replaced(classic, b"Algorithm='", b"Algorithm='" + b"u" * (10 * MIB)))
    put("comment-flood-10mb.enc", classic[: start + 200] + b"<!--" + b"-x" * (5 * MIB) + b"-->" + classic[start + 200 :], "opens")
    put("unclosed-comment-10mb.enc", classic[:insert_at] + b"<!--" + b"x" * (10 * MIB))
    put("text-flood-count.enc", replaced(classic, b"<IterationCount>", b"<IterationCount>" + b" " * (10 * MIB)))
    put("text-flood-salt.enc", replaced(classic, b"<Specified>", b"<Specified>" + b"A" * (10 * MIB)))
    put("processing-instruction-10mb.enc", classic[:insert_at] + b"<?pi " + b"x" * (10 * MIB) + b"?>" + classic[insert_at:], "opens")
    put("cdata-flood-10mb.enc", classic[:insert_at] + b"<x><![CDATA[" + b"]" * (10 * MIB) + b"]]></x>" + classic[insert_at:], "opens")
    put("references-10mb.enc", with_value(classic, b"&#65;" * (2 * MIB)))

    # Huge salts and counts.
    put("huge-salt.enc", re.sub(rb"<Specified>.*?</Specified>",
                                b"<Specified>" + base64.b64encode(b"s" * MIB) + b"</Specified>", classic))
    put("salt-over-limit.enc", re.sub(rb"<Specified>.*?</Specified>",
                                      b"<Specified>" + base64.b64encode(b"s" * 257) + b"</Specified>", classic))
    put("count-over-limit.enc", replaced(classic, b"<IterationCount>1000", b"<IterationCount>2000001"))
    put("count-negative.enc", replaced(classic, b"<IterationCount>1000", b"<IterationCount>-1000"))
    put("key-length-32.enc", replaced(classic, b"<KeyLength>16", b"<KeyLength>32"))
    put("oversize-200mb.enc", b"")   # made sparse below: refused by its size, unread

    # Tampered classic cipher texts: IV bytes (the padding oracle's moves),
    # the last block, a middle block.
    put("tampered-cbc-iv-first.enc", flipped_iv(classic, 0), "wrong")
    put("tampered-cbc-iv-last.enc", flipped_iv(classic, 15), "wrong")
    cbc_text = base64.b64decode(classic[start + 24 : end])
    for name, index in (("last-block", len(cbc_text) - 1), ("second-last-block", len(cbc_text) - 17),
                        ("middle", len(cbc_text) // 2)):
        raw = bytearray(cbc_text)
        raw[index] ^= 0x01
        put("tampered-cbc-%s.enc" % name, with_value(classic, classic[start : start + 24] + base64.b64encode(bytes(raw))),
            "wrong")
    # The last byte of the padding turned into 1, which is valid padding: the
    # old reader answered with altered text.
    with open(document, "rb") as f:
        padding = 16 - len(f.read()) % 16
    assert padding != 1
    raw = bytearray(cbc_text)
    raw[len(cbc_text) - 17] ^= padding ^ 0x01
    put("tampered-cbc-padding-one.enc", with_value(classic, classic[start : start + 24] + base64.b64encode(bytes(raw))),
        "wrong")
    put("tampered-cbc-truncated-block.enc", with_value(classic, classic[start : start + 24]
                                                          + base64.b64encode(cbc_text[:-16])), "wrong")

    # Tampered authenticated envelopes (a changed character anywhere is the
    # envelope test's): another valid count, a cut-off tag, a classic label.
    astart, aend = value(authenticated)
    gcm = base64.b64decode(authenticated[astart:aend])
    put("tampered-gcm-count.enc", replaced(authenticated, b"<IterationCount>1000", b"<IterationCount>1001"), "wrong")
    put("tampered-gcm-no-tag.enc", with_value(authenticated, base64.b64encode(gcm[:-16])), "wrong")
    put("tampered-gcm-cbc-label.enc", replaced(authenticated, b"xmlenc11#aes128-gcm", b"xmlenc#aes128-cbc"))

    # Other encodings.
    put("utf16.enc", "\ufeff".encode("utf-16-le") + classic.decode().encode("utf-16-le"))
    put("latin1-comment.enc", classic[:insert_at] + b"<!-- caf\xe9 -->" + classic[insert_at:])

    with open(os.path.join(out, "oversize-200mb.enc"), "r+b") as f:
        f.write(classic[:insert_at])
        f.truncate(200 * MIB)
    with open(os.path.join(out, "manifest.txt"), "w") as f:
        for name, outcome in manifest:
            f.write("%s %s\n" % (name, outcome))


if __name__ == "__main__":
    main()
