#!/usr/bin/env python3
"""Rewrites a UTF-8 word vector file in another encoding.

  wordvec_encode.py IN OUT ENCODING

The library compares the words with the bytes of the text, so a GBK model
needs GBK keys. A word that the encoding cannot hold is dropped rather than
cut short, since a shortened word could take the row of another one. The
count in the header is updated; the numbers are copied as they are.
"""
import sys


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__.strip())
    src, dst, encoding = sys.argv[1:]
    with open(src, encoding="utf-8") as f:
        header = f.readline().split()
        rows = []
        for line in f:
            word, _, rest = line.rstrip("\r\n").partition(" ")
            try:
                rows.append(word.encode(encoding) + b" " + rest.encode("ascii") + b"\n")
            except UnicodeEncodeError:
                continue
    if len(header) != 2:
        sys.exit("wordvec_encode.py: bad header in " + src)
    dropped = int(header[0]) - len(rows)
    with open(dst, "wb") as f:
        f.write(("%d %s\n" % (len(rows), header[1])).encode("ascii"))
        f.writelines(rows)
    if dropped:
        sys.stderr.write("wordvec_encode.py: %d words have no %s form, dropped\n" % (dropped, encoding))


if __name__ == "__main__":
    main()
