#!/usr/bin/python3
"""Writes a saved vocabulary of UTF-8 words as the same vocabulary of GBK words.

  vocab_to_gbk.py IN.vocab OUT.vocab

Character n-grams of GBK text are the same characters as those of UTF-8
text in other bytes, so a centroid trained on UTF-8 text serves GBK text
through a converted vocabulary: ids, counts and order stay as they are, and
the centroid file is used unchanged. A word with a character that GBK lacks
can never be met in GBK text; it becomes its UTF-8 bytes behind a 0xFF byte,
which no GBK text holds, so it keeps its id and stays distinct from every
other word.

The file is read and written record by record: docCount, the count N, then
N times (word as Base64 text, df, tf, separator byte), integers little-endian.
"""
import base64
import struct
import sys

UNMATCHABLE = b"\xff"


def encode_string(raw):
    # Base64 broken by CR LF after every 76 characters, as the library writes it.
    if not raw:
        return struct.pack("<I", 0)
    text = base64.b64encode(raw)
    text = b"\r\n".join(text[i:i + 76] for i in range(0, len(text), 76))
    return struct.pack("<I", len(text)) + text


def read_vocabulary(data):
    """Yields docCount, then (word bytes, df, tf, separator) per record."""
    at = 0

    def take(n):
        nonlocal at
        if at + n > len(data):
            raise ValueError("truncated vocabulary")
        at += n
        return data[at - n:at]

    doc_count, n = struct.unpack("<Ii", take(8))
    if n < 1:
        raise ValueError("a vocabulary without words")
    yield doc_count
    for _ in range(n):
        length, = struct.unpack("<i", take(4))
        if length < 0:
            raise ValueError("negative string length")
        word = base64.b64decode(take(length).replace(b"\r\n", b""), validate=True) if length else b""
        df, tf = struct.unpack("<II", take(8))
        separator = take(1) if at < len(data) else b"\n"
        yield word, df, tf, separator
    if at != len(data):
        raise ValueError("bytes after the last record")


def to_gbk(word, taken):
    try:
        out = word.decode("utf-8").encode("gbk")
    except (UnicodeDecodeError, UnicodeEncodeError):
        out = None
    if out is None or out in taken:
        out = UNMATCHABLE + word
    taken.add(out)
    return out


def convert(data):
    records = read_vocabulary(data)
    doc_count = next(records)
    rows = list(records)
    out = [struct.pack("<II", doc_count, len(rows))]
    taken = set()
    for word, df, tf, separator in rows:
        out.append(encode_string(to_gbk(word, taken)) + struct.pack("<II", df, tf) + separator)
    return b"".join(out)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    with open(sys.argv[1], "rb") as f:
        data = f.read()
    try:
        converted = convert(data)
    except (ValueError, struct.error) as e:
        sys.exit("vocab_to_gbk.py: %s: %s" % (sys.argv[1], e))
    with open(sys.argv[2], "wb") as f:
        f.write(converted)


if __name__ == "__main__":
    main()
