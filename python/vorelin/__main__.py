"""python -m vorelin classify: the package as a stage of a shell pipeline.

Like `vorelin classify`: one result line per input line, in input order.
"""
import argparse
import os
import sys

USAGE = "python -m vorelin classify [options] [TEXT...]"
BATCH = 4096


def _parser():
    p = argparse.ArgumentParser(
        prog="python -m vorelin classify", usage=USAGE,
        description="Scores each TEXT, or each line of FILE, or each line of standard input when "
                    "neither is given, and prints one line per input line, in input order: "
                    "score<TAB>text (tsv) or {\"text\": ..., \"score\": ...} (jsonl). An empty line "
                    "gets an empty score (null in jsonl). Positive scores mean positive opinion.")
    p.add_argument("--config", metavar="FILE", help="classifier configuration (default: the shipped model)")
    p.add_argument("--encoding", default="utf-8", choices=["utf-8", "utf8", "UTF-8", "gbk", "GBK"],
                   help="encoding of the texts and of the shipped model (default utf-8)")
    p.add_argument("--threads", type=int, default=1, metavar="N", help="score from N threads (default 1)")
    p.add_argument("--format", default="tsv", choices=["tsv", "jsonl"])
    p.add_argument("--input", metavar="FILE", help="read texts from FILE, one per line")
    p.add_argument("--library", metavar="PATH", help="libVorelin.so to load")
    p.add_argument("--quiet", action="store_true", help="drop the library's log records (otherwise on stderr)")
    p.add_argument("texts", nargs="*", metavar="TEXT")
    return p


def _json_escape(data):
    out = bytearray()
    for c in data:
        if c == 0x22:
            out += b'\\"'
        elif c == 0x5C:
            out += b"\\\\"
        elif c == 0x0A:
            out += b"\\n"
        elif c == 0x0D:
            out += b"\\r"
        elif c == 0x09:
            out += b"\\t"
        elif c < 0x20:
            out += b"\\u%04x" % c
        else:
            out.append(c)
    return bytes(out)


def _format(text, score, jsonl):
    number = b"" if score is None else b"%.6f" % score
    if jsonl:
        return b'{"text": "' + _json_escape(text) + b'", "score": ' + (number or b"null") + b"}\n"
    return number + b"\t" + text + b"\n"


def _lines(stream):
    """Input lines as bytes, without line ends or a leading UTF-8 byte order mark."""
    first = True
    for line in stream:
        if line.endswith(b"\n"):
            line = line[:-1]
        if line.endswith(b"\r"):
            line = line[:-1]
        if first and line.startswith(b"\xef\xbb\xbf"):
            line = line[3:]
        first = False
        yield line


def _batches(lines):
    batch = []
    for line in lines:
        batch.append(line)
        if len(batch) == BATCH:
            yield batch
            batch = []
    if batch:
        yield batch


def _classify(args, out):
    from . import Classifier, VorelinError

    encoding = "gbk" if args.encoding.lower() == "gbk" else "utf-8"
    try:
        clf = Classifier(args.config, encoding=encoding, library=args.library)
    except (OSError, VorelinError, ValueError) as error:
        sys.stderr.write("python -m vorelin classify: %s\n" % error)
        return 1
    if args.texts:
        source = [os.fsencode(t) for t in args.texts]
    elif args.input:
        try:
            source = open(args.input, "rb")
        except OSError as error:
            sys.stderr.write("python -m vorelin classify: cannot read %s: %s\n" % (args.input, error.strerror))
            return 1
    else:
        source = sys.stdin.buffer
    status = 0
    jsonl = args.format == "jsonl"
    with clf:
        lines = source if args.texts else _lines(source)
        for batch in _batches(lines):
            try:
                scores = clf.score_many(batch, threads=args.threads)
            except (VorelinError, ValueError):
                # Find the lines that fail and leave their scores empty.
                scores = []
                for text in batch:
                    try:
                        scores.append(clf.score(text))
                    except (VorelinError, ValueError):
                        scores.append(None)
            for text, score in zip(batch, scores):
                if score is None or not text:
                    status = 1 if text else status
                    score = None
                out.write(_format(text, score, jsonl))
            out.flush()
    if status:
        sys.stderr.write("python -m vorelin classify: some lines could not be classified\n")
    return status


def main(argv=None):
    argv = sys.argv[1:] if argv is None else argv
    if not argv or argv[0] in ("-h", "--help"):
        sys.stdout.write("usage: %s\n(python -m vorelin classify --help for the options)\n" % USAGE)
        return 0 if argv else 2
    if argv[0] != "classify":
        sys.stderr.write("python -m vorelin: unknown command %r; the command is classify\n" % argv[0])
        return 2
    args = _parser().parse_args(argv[1:])
    if args.threads < 1 or args.threads > 256:
        sys.stderr.write("python -m vorelin classify: --threads needs a number from 1 to 256\n")
        return 2
    if args.input and args.texts:
        sys.stderr.write("python -m vorelin classify: give texts as arguments or with --input, not both\n")
        return 2
    # Results alone go to standard output. Whatever the library prints, even
    # where it ignores VORELIN_LOG, goes to standard error (or nowhere).
    os.environ["VORELIN_LOG"] = "off" if args.quiet else "stderr"
    sys.stdout.flush()
    results = os.fdopen(os.dup(1), "wb")
    sink = os.open(os.devnull, os.O_WRONLY) if args.quiet else 2
    os.dup2(sink, 1)
    try:
        return _classify(args, results)
    finally:
        results.close()


if __name__ == "__main__":
    sys.exit(main())
