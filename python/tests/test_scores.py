"""Scores through the package agree with the C interface's, in both encodings."""
import random
import subprocess

import pytest

import vorelin
from conftest import HOST, MODEL, TEXTS


def host_scores(config, texts):
    """What the plain C example host prints for these texts: '%+.4f'."""
    out = subprocess.run([HOST, config] + texts, capture_output=True, check=True, timeout=120).stdout
    return [line.split(b"\t", 1)[0].decode() for line in out.splitlines() if b"\t" in line]


@pytest.mark.parametrize("encoding", ["utf-8", "gbk"])
def test_scores_equal_the_c_hosts(encoding):
    encoded = [t.encode(encoding) for t in TEXTS]
    expected = host_scores(MODEL[encoding], encoded)
    assert len(expected) == len(TEXTS)
    with vorelin.Classifier(encoding=encoding) as clf:
        assert clf.config == MODEL[encoding]
        assert ["%+.4f" % clf.score(t) for t in TEXTS] == expected
        # bytes go through untouched and score the same as str
        assert [clf.score(b) for b in encoded] == [clf.score(t) for t in TEXTS]
    # the scores carry opinion, so a mix-up of texts would show
    assert len(set(expected)) > 2


def test_score_many_keeps_input_order_and_equals_score(clf):
    rng = random.Random(7)
    texts = [rng.choice(TEXTS) + "!" * rng.randrange(3) for _ in range(1500)]
    texts[10] = ""
    texts[11] = texts[12].encode("utf-8")
    one_by_one = [clf.score(t) for t in texts]
    assert one_by_one[10] == 0.0
    for threads in (1, 2, 5):
        assert clf.score_many(texts, threads=threads) == one_by_one
    assert clf.score_many(iter(texts[:3]), threads=3) == one_by_one[:3]
    assert clf.score_many([], threads=4) == []
    # a bad text anywhere fails the whole call with the first fault
    with pytest.raises(TypeError):
        clf.score_many(texts[:700] + [None] + texts[700:], threads=2)
    with pytest.raises(TypeError):
        clf.score_many("a text, not a list")
    with pytest.raises(ValueError):
        clf.score_many(texts, threads=0)
