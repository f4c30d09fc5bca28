"""Many threads on one classifier, with updates and a close among them."""
import threading
import time

import vorelin
from conftest import MODEL, TEXTS


def scoring_threads(clf, keep_going, outcomes, n=3):
    """Starts n threads that score TEXTS while keep_going() holds, appending
    (text, score or exception) to outcomes; returns them started."""
    def score():
        try:
            while keep_going():
                outcomes.extend((text, clf.score(text)) for text in TEXTS)
                outcomes.extend(zip(TEXTS * 30, clf.score_many(TEXTS * 30, threads=2)))
        except vorelin.VorelinError as error:
            outcomes.append(("", error))
    pool = [threading.Thread(target=score) for _ in range(n)]
    for t in pool:
        t.start()
    return pool


def test_scores_stay_right_while_another_thread_updates():
    with vorelin.Classifier() as clf:
        expected = {t: clf.score(t) for t in TEXTS}
        outcomes, updating = [], threading.Event()
        updating.set()
        pool = scoring_threads(clf, updating.is_set, outcomes)
        try:
            for _ in range(5):
                clf.update(MODEL["utf-8"])
                time.sleep(0.01)
        finally:
            updating.clear()
            for t in pool:
                t.join()
    assert [o for o in outcomes if o[1] != expected.get(o[0])] == []
    # the scoring threads ran all along the updates
    assert len(outcomes) >= 100


def test_close_beside_scoring_gives_closed_errors_only():
    clf = vorelin.Classifier()
    expected = {t: clf.score(t) for t in TEXTS}
    outcomes = []
    pool = scoring_threads(clf, lambda: True, outcomes)
    time.sleep(0.05)
    clf.close()
    for t in pool:
        t.join()
    errors = [str(o[1]) for o in outcomes if isinstance(o[1], Exception)]
    assert errors == ["the classifier is closed"] * 3
    assert all(o[1] == expected[o[0]] for o in outcomes if not isinstance(o[1], Exception))
