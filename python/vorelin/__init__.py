"""Sentiment scores for Chinese and English text, over libVorelin.so.

    import vorelin
    with vorelin.Classifier() as clf:
        print(clf.score("这家餐厅的菜很好吃"))
"""
from ._classifier import Classifier, VorelinError
from ._locate import find_library, find_model

__all__ = ["Classifier", "VorelinError", "find_library", "find_model"]
__version__ = "0.1.0"
