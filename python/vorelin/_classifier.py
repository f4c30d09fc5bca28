"""The classifier: one handle of the library, safe to share between threads."""
import ctypes
import itertools
import os
import threading

from . import _locate

# score_many holds the read lock for this many texts at a time, so that an
# update waits at most one chunk per worker.
_CHUNK = 64
_LOG_TARGETS = ("", "stdout", "stderr", "off")


class VorelinError(Exception):
    """The library refused a configuration or a text, or the classifier is closed."""


class _ReadWriteLock:
    """Many readers or one writer; a waiting writer holds new readers back."""

    def __init__(self):
        self._cond = threading.Condition(threading.Lock())
        self._readers = 0
        self._writing = False
        self._waiting_writers = 0

    def acquire_read(self):
        with self._cond:
            while self._writing or self._waiting_writers:
                self._cond.wait()
            self._readers += 1

    def release_read(self):
        with self._cond:
            self._readers -= 1
            if self._readers == 0:
                self._cond.notify_all()

    def acquire_write(self):
        with self._cond:
            self._waiting_writers += 1
            try:
                while self._writing or self._readers:
                    self._cond.wait()
            finally:
                self._waiting_writers -= 1
            self._writing = True

    def release_write(self):
        with self._cond:
            self._writing = False
            self._cond.notify_all()


class _LogTail:
    """What the library appended to its log file during a call, when
    VORELIN_LOG names a file; the reason for a failure, where one can be had."""

    def __init__(self):
        target = os.environ.get("VORELIN_LOG", "")
        self._path = None if target in _LOG_TARGETS else target
        self._start = self._size()

    def _size(self):
        try:
            return os.path.getsize(self._path) if self._path else 0
        except OSError:
            return 0

    def text(self):
        if not self._path or self._size() <= self._start:
            return ""
        with open(self._path, "rb") as f:
            f.seek(self._start)
            return f.read(64 * 1024).decode("utf-8", "replace").strip()


def _config_path(config):
    if not isinstance(config, (str, bytes, os.PathLike)):
        raise TypeError("a configuration is a path (str, bytes or os.PathLike), not %s" % type(config).__name__)
    raw = os.fsencode(config)
    if b"\0" in raw:
        raise ValueError("a configuration path cannot hold a NUL byte")
    if not raw:
        raise ValueError("the configuration path is empty")
    if not os.path.exists(raw):
        raise FileNotFoundError(2, "configuration file not found", os.fsdecode(raw))
    return raw


def _normal_encoding(encoding):
    name = str(encoding).lower().replace("_", "-")
    if name in ("utf-8", "utf8"):
        return "utf-8"
    if name == "gbk":
        return "gbk"
    raise ValueError("encoding must be 'utf-8' or 'gbk', not %r" % (encoding,))


class Classifier:
    """A sentiment classifier built from an XML configuration.

    Without a configuration the shipped default model of the encoding is used.
    Texts given as str are encoded to `encoding`; bytes are passed as they are.
    Scores may be asked for from many threads at once; update() and close()
    wait for running scores and hold new ones back meanwhile.
    """

    def __init__(self, config=None, encoding="utf-8", library=None):
        self._handle = None
        self._lock = _ReadWriteLock()
        self.encoding = _normal_encoding(encoding)
        self._lib, self.library_path = _locate.load_library(library)
        if config is None:
            config = _locate.find_model(self.encoding, self.library_path)
        raw = _config_path(config)
        handle = ctypes.c_void_p()
        log = _LogTail()
        if not self._lib.Senti_Classifier_Init(raw, ctypes.byref(handle)) or not handle.value:
            raise VorelinError(self._reason("cannot initialise a classifier from %s" % os.fsdecode(raw), log))
        self._handle = handle.value
        self.config = os.fsdecode(raw)

    @staticmethod
    def _reason(message, log):
        detail = log.text()
        if detail:
            return message + ": " + detail
        return message + " (the library's log records say why: standard error unless VORELIN_LOG says otherwise)"

    # -- texts ---------------------------------------------------------
    def _encode(self, text):
        if isinstance(text, str):
            try:
                data = text.encode(self.encoding)
            except UnicodeEncodeError as error:
                raise UnicodeEncodeError(
                    error.encoding, error.object, error.start, error.end,
                    "the model's encoding %s has no character %r; pass bytes or use a model of another encoding"
                    % (self.encoding, error.object[error.start:error.end])) from None
        elif isinstance(text, (bytes, bytearray, memoryview)):
            data = bytes(text)
        else:
            raise TypeError("a text is str or bytes, not %s" % type(text).__name__)
        if b"\0" in data:
            raise ValueError("a text cannot hold a NUL byte (at %d)" % data.index(b"\0"))
        return data

    def _perform(self, data, out):
        # The library refuses an empty text; it carries no opinion either way.
        if not data:
            return 0.0
        if not self._lib.Senti_Classify_Perform(self._handle, data, ctypes.byref(out)):
            raise VorelinError("the library could not classify %r" % (data[:80],))
        return out.value

    def _check_open(self):
        if self._handle is None:
            raise VorelinError("the classifier is closed")

    def score(self, text):
        """The score of one text: positive for a positive opinion."""
        data = self._encode(text)
        out = ctypes.c_double()
        self._lock.acquire_read()
        try:
            self._check_open()
            return self._perform(data, out)
        finally:
            self._lock.release_read()

    def score_many(self, texts, threads=1):
        """Scores of many texts, in input order, from `threads` threads.

        The library runs without the interpreter lock, so threads score in
        parallel on one handle.
        """
        if isinstance(texts, (str, bytes)):
            raise TypeError("score_many takes a sequence of texts; use score() for one")
        texts = list(texts)
        threads = int(threads)
        if threads < 1:
            raise ValueError("threads must be at least 1")
        results = [0.0] * len(texts)
        chunks = itertools.count()
        failures = []

        perform = self._lib.Senti_Classify_Perform

        def work():
            out = ctypes.c_double()
            ref = ctypes.byref(out)
            while not failures:
                start = next(chunks) * _CHUNK
                if start >= len(texts):
                    return
                end = min(start + _CHUNK, len(texts))
                try:
                    encoded = [self._encode(t) for t in texts[start:end]]
                    self._lock.acquire_read()
                    try:
                        self._check_open()
                        handle = self._handle
                        for i, data in enumerate(encoded, start):
                            # The hot loop: nothing but the call between texts.
                            if data and not perform(handle, data, ref):
                                raise VorelinError("the library could not classify %r" % (data[:80],))
                            results[i] = out.value if data else 0.0
                    finally:
                        self._lock.release_read()
                except BaseException as error:  # handed to the caller below
                    failures.append((start, error))
                    return

        threads = min(threads, (len(texts) + _CHUNK - 1) // _CHUNK)
        if threads <= 1:
            work()
        else:
            pool = [threading.Thread(target=work, daemon=True) for _ in range(threads)]
            for t in pool:
                t.start()
            for t in pool:
                t.join()
        if failures:
            raise min(failures, key=lambda f: f[0])[1]
        return results

    # -- life cycle ----------------------------------------------------
    def update(self, config, encoding=None):
        """Rebuilds the classifier from another configuration; waits for
        running scores and holds new ones back until it is done."""
        raw = _config_path(config)
        new_encoding = self.encoding if encoding is None else _normal_encoding(encoding)
        self._lock.acquire_write()
        try:
            self._check_open()
            log = _LogTail()
            if not self._lib.Senti_Classifier_Update(raw, self._handle):
                raise VorelinError(self._reason("cannot update the classifier from %s" % os.fsdecode(raw), log))
            self.encoding = new_encoding
            self.config = os.fsdecode(raw)
        finally:
            self._lock.release_write()

    def close(self):
        """Releases the classifier; later calls raise VorelinError. Idempotent."""
        self._lock.acquire_write()
        try:
            handle, self._handle = self._handle, None
            if handle is not None:
                self._lib.Senti_Classifier_Exit(handle)
        finally:
            self._lock.release_write()

    @property
    def closed(self):
        return self._handle is None

    def __enter__(self):
        self._check_open()
        return self

    def __exit__(self, *exc):
        self.close()

    def __del__(self):
        try:
            if getattr(self, "_handle", None) is not None:
                self._lib.Senti_Classifier_Exit(self._handle)
                self._handle = None
        except Exception:  # interpreter shutdown may have torn down ctypes
            pass

    def __repr__(self):
        state = "closed" if self._handle is None else self.config
        return "<vorelin.Classifier %s (%s)>" % (state, self.encoding)
