"""Every failure is a Python exception with a reason, never a crash."""
import pytest

import vorelin
from conftest import MODEL, run_python


def test_bad_configurations(tmp_path):
    with pytest.raises(FileNotFoundError) as missing:
        vorelin.Classifier(str(tmp_path / "no_such.xml"))
    assert missing.value.filename == str(tmp_path / "no_such.xml")
    broken = tmp_path / "broken.xml"
    broken.write_text("<number_senti_classifiers><item><identifier>no_such_classifier</identifier>"
                      "</item></number_senti_classifiers>")
    with pytest.raises(vorelin.VorelinError, match="cannot initialise a classifier from .*broken.xml"):
        vorelin.Classifier(str(broken))
    with pytest.raises(ValueError):
        vorelin.Classifier("a\0b.xml")
    with pytest.raises(TypeError):
        vorelin.Classifier(42)
    with pytest.raises(ValueError, match="encoding"):
        vorelin.Classifier(encoding="latin-1")

    with vorelin.Classifier() as clf:
        with pytest.raises(FileNotFoundError):
            clf.update(str(tmp_path / "no_such.xml"))
        # a missing file never reached the library: the classifier still works
        assert clf.score("好") > 0
        broken.write_text("<unclosed")
        with pytest.raises(vorelin.VorelinError, match="cannot update the classifier"):
            clf.update(str(broken))
        clf.update(MODEL["utf-8"])
        assert clf.config == MODEL["utf-8"]


def test_bad_texts(clf):
    for text in ("a\0b", b"a\0b"):
        with pytest.raises(ValueError, match="NUL"):
            clf.score(text)
    for text in (None, 3.5, ["好"]):
        with pytest.raises(TypeError, match="str or bytes"):
            clf.score(text)
    assert clf.score("") == 0.0 and clf.score(b"") == 0.0
    assert clf.score(bytearray("好".encode())) == clf.score("好")
    # characters outside the BMP are fine in UTF-8 ...
    assert isinstance(clf.score("好 😀"), float)
    # ... but not in GBK, which gets a clear error
    with vorelin.Classifier(encoding="gbk") as gbk:
        with pytest.raises(UnicodeEncodeError, match="gbk has no character '😀'"):
            gbk.score("好 😀")
        # GBK bytes that the library gets unchanged; the GBK default is the
        # UTF-8 one in other bytes
        assert gbk.score("好".encode("gbk")) == gbk.score("好") == clf.score("好")


def test_a_closed_classifier():
    clf = vorelin.Classifier()
    with clf as entered:
        assert entered is clf and not clf.closed
    assert clf.closed and "closed" in repr(clf)
    for call in (lambda: clf.score("好"), lambda: clf.score_many(["好"] * 100, threads=2),
                 lambda: clf.update(MODEL["utf-8"]), lambda: clf.__enter__()):
        with pytest.raises(vorelin.VorelinError, match="closed"):
            call()
    clf.close()  # a second close does nothing


LOG_PROBE = """
import vorelin, sys
try:
    vorelin.Classifier(sys.argv[1])
except vorelin.VorelinError as e:
    print("error:", e)
c = vorelin.Classifier()
print("score", c.score("好"))
c.close()
"""


def test_log_records_follow_vorelin_log(tmp_path):
    broken = tmp_path / "broken.xml"
    broken.write_text("<unclosed")
    record = b"Sentiment Classifier Init Successfully"

    def run(env):
        result = run_python(["-c", LOG_PROBE, str(broken)], env=env)
        assert result.returncode == 0 and b"score 0.3096" in result.stdout, result.stderr
        return result

    off = run({"VORELIN_LOG": "off"})
    assert record not in off.stdout + off.stderr
    default, log = run({}), tmp_path / "vorelin.log"
    to_file = run({"VORELIN_LOG": str(log)})
    # the package's default: records on standard error, results alone on standard output
    assert record in default.stderr and record not in default.stdout
    assert record in log.read_bytes() and record not in to_file.stdout + to_file.stderr
    # a failed init quotes the library's own reason
    assert b"error: cannot initialise a classifier from " in to_file.stdout
    assert b"Failed to Init Sentiment Classifier" in to_file.stdout
