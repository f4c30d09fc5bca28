"""Finding libVorelin.so and the shipped default model."""
import ctypes
import ctypes.util
import os
import sys
import threading

LIBRARY_ENV = "VORELIN_LIBRARY"
MODEL_ENV = "VORELIN_MODEL_DIR"
LIBRARY_NAME = "libVorelin.so"
MODEL_FILES = {"utf-8": "default_utf8.xml", "gbk": "default_gbk.xml"}

_HERE = os.path.dirname(os.path.abspath(__file__))
# python/vorelin inside a checkout: the build tree is <checkout>/build.
_CHECKOUT_BUILD = os.path.join(os.path.dirname(os.path.dirname(_HERE)), "build")


def _installed():
    """Paths recorded by `cmake --install` beside the package, if any."""
    try:
        from . import _installed as recorded
    except ImportError:
        return None, None
    return getattr(recorded, "LIBRARY", None), getattr(recorded, "MODEL_DIR", None)


def library_candidates(explicit=None):
    """Where the library is looked for, in order."""
    if explicit is not None:
        return [os.fspath(explicit)]
    env = os.environ.get(LIBRARY_ENV)
    if env:
        return [env]
    found = []
    recorded, _ = _installed()
    if recorded:
        found.append(recorded)
    for prefix in (sys.prefix, "/usr/local", "/usr"):
        for libdir in ("lib", "lib64", "lib/x86_64-linux-gnu", "lib/aarch64-linux-gnu"):
            found.append(os.path.join(prefix, libdir, LIBRARY_NAME))
    system = ctypes.util.find_library("Vorelin")
    if system:
        found.append(system)
    found.append(os.path.join(_CHECKOUT_BUILD, LIBRARY_NAME))
    unique = []
    for path in found:
        if path not in unique:
            unique.append(path)
    return unique


def _is_loadable_name(path):
    # A bare soname from find_library is resolved by the dynamic loader.
    return os.path.isfile(path) or os.sep not in path


def find_library(explicit=None):
    candidates = library_candidates(explicit)
    for path in candidates:
        if _is_loadable_name(path):
            return path
    origin = "the library= argument" if explicit is not None else (
        "$" + LIBRARY_ENV if os.environ.get(LIBRARY_ENV) else "the usual places")
    raise FileNotFoundError(
        "%s not found in %s; searched: %s. Install Vorelin (cmake --install), build it, "
        "or set %s to the library's path" % (LIBRARY_NAME, origin, ", ".join(candidates), LIBRARY_ENV))


def model_candidates(encoding, library_path):
    """Where the default model of an encoding is looked for, in order."""
    name = MODEL_FILES[encoding]
    dirs = []
    env = os.environ.get(MODEL_ENV)
    if env:
        dirs.append(env)
    _, recorded = _installed()
    if recorded:
        dirs.append(recorded)
    if library_path and os.sep in library_path:
        libdir = os.path.dirname(os.path.realpath(library_path))
        # Installed: <prefix>/lib[/<triplet>]/libVorelin.so beside <prefix>/share.
        dirs.append(os.path.join(libdir, "..", "share", "vorelin", "default"))
        dirs.append(os.path.join(libdir, "..", "..", "share", "vorelin", "default"))
        # Build tree: the library sits at the top of it.
        dirs.append(os.path.join(libdir, "models", "default"))
    for prefix in ("/usr/local", "/usr"):
        dirs.append(os.path.join(prefix, "share", "vorelin", "default"))
    dirs.append(os.path.join(_CHECKOUT_BUILD, "models", "default"))
    return [os.path.normpath(os.path.join(d, name)) for d in dirs]


def find_model(encoding, library_path):
    candidates = model_candidates(encoding, library_path)
    for path in candidates:
        if os.path.isfile(path):
            return path
    raise FileNotFoundError(
        "the default %s model (%s) was not found; searched: %s. Give a configuration file, "
        "or set %s to the folder that holds it" % (encoding, MODEL_FILES[encoding], ", ".join(candidates),
                                                   MODEL_ENV))


_loaded = {}
_load_lock = threading.Lock()


def load_library(explicit=None):
    """The loaded library (one per path and process) and its path."""
    path = find_library(explicit)
    with _load_lock:
        lib = _loaded.get(path)
        if lib is None:
            # Records go to standard error unless the user chose otherwise;
            # the library reads the variable once, when it first logs.
            os.environ.setdefault("VORELIN_LOG", "stderr")
            try:
                lib = ctypes.CDLL(path)
            except OSError as error:
                raise OSError("cannot load %s: %s" % (path, error)) from error
            _declare(lib)
            _loaded[path] = lib
    return lib, path


def _declare(lib):
    handle_p = ctypes.POINTER(ctypes.c_void_p)
    lib.Senti_Classifier_Init.argtypes = [ctypes.c_char_p, handle_p]
    lib.Senti_Classifier_Update.argtypes = [ctypes.c_char_p, ctypes.c_void_p]
    lib.Senti_Classify_Perform.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(ctypes.c_double)]
    lib.Senti_Classifier_Exit.argtypes = [ctypes.c_void_p]
    for name in ("Senti_Classifier_Init", "Senti_Classifier_Update", "Senti_Classify_Perform",
                 "Senti_Classifier_Exit"):
        getattr(lib, name).restype = ctypes.c_int
