"""Many threads on one classifier, with updates and a close among them."""
import threading
import time

import vorelin
from conftest import MODEL, TEXTS


def test_scores_stay_right_while_another_thread_updates():
    clf = vorelin.Classifier()
    expected = {t: clf.score(t) for t in TEXTS}
    updating = threading.Event()
    updating.set()
    faults, scored = [], []

    def score():
        n = 0
        while updating.is_set():
            for text in TEXTS:
                try:
                    got = clf.score(text)
                except Exception as error:  # collected, asserted on below
                    faults.append(error)
                    continue
                if got != expected[text]:
                    faults.append("%r scored %r, not %r" % (text, got, expected[text]))
                n += 1
            batch = clf.score_many(TEXTS * 30, threads=2)
            if batch != [expected[t] for t in TEXTS] * 30:
                faults.append("score_many went wrong")
        scored.append(n)

    pool = [threading.Thread(target=score) for _ in range(3)]
    for t in pool:
        t.start()
    try:
        for _ in range(5):
            clf.update(MODEL["utf-8"])
            time.sleep(0.01)
    finally:
        updating.clear()
        for t in pool:
            t.join()
        clf.close()
    assert faults == []
    # every scoring thread ran all along the updates
    assert len(scored) == 3 and min(scored) >= 10, scored


def test_close_beside_scoring_gives_closed_errors_only():
    clf = vorelin.Classifier()
    expected = {t: clf.score(t) for t in TEXTS}
    results = []

    def score():
        deadline = time.monotonic() + 60
        while time.monotonic() < deadline:
            try:
                results.append(clf.score(TEXTS[0]) == expected[TEXTS[0]])
            except vorelin.VorelinError as error:
                results.append(str(error))
                return

    pool = [threading.Thread(target=score) for _ in range(3)]
    for t in pool:
        t.start()
    time.sleep(0.05)
    clf.close()
    for t in pool:
        t.join()
    assert set(results) == {True, "the classifier is closed"}
    assert results.count("the classifier is closed") == 3
