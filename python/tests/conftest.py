"""Shared set-up: the package from this checkout, the build tree's library,
model, example host and command line (ctest points at its own build tree)."""
import os
import subprocess
import sys

import pytest

PYTHON_DIR = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, PYTHON_DIR)
BUILD = os.environ.get("VORELIN_BUILD_DIR") or os.path.join(os.path.dirname(PYTHON_DIR), "build")
os.environ.setdefault("VORELIN_LIBRARY", os.path.join(BUILD, "libVorelin.so"))
os.environ["VORELIN_LIBRARY_UNDER_TEST"] = os.environ["VORELIN_LIBRARY"]
os.environ.setdefault("VORELIN_MODEL_DIR", os.path.join(BUILD, "models", "default"))
HOST = os.environ.get("VORELIN_EXAMPLE_HOST") or os.path.join(BUILD, "examples", "vorelin_example_host")
CLI = os.environ.get("VORELIN_CLI") or os.path.join(BUILD, "tools", "vorelin")
MODEL = {enc: os.path.join(os.environ["VORELIN_MODEL_DIR"], name)
         for enc, name in (("utf-8", "default_utf8.xml"), ("gbk", "default_gbk.xml"))}

import vorelin  # noqa: E402  (after the path is set)

TEXTS = ["这家餐厅的菜很好吃", "质量太差了，不推荐购买", "The room was dirty and noisy.",
         "This hotel was wonderful, the staff were friendly.", "还行吧，不算好也不算差", "不是很好"]


@pytest.fixture
def clf():
    with vorelin.Classifier() as c:
        yield c


def run_python(code_or_args, env=None, input=None, cwd=None):
    """Runs this interpreter in a child process with the package importable."""
    full = dict(os.environ, PYTHONPATH=PYTHON_DIR)
    full.pop("VORELIN_LOG", None)  # the package's own default unless a test sets one
    full.update(env or {})
    args = code_or_args if isinstance(code_or_args, list) else ["-c", code_or_args]
    return subprocess.run([sys.executable] + args, env=full, input=input, capture_output=True, cwd=cwd,
                          timeout=300)


def pytest_sessionfinish(session, exitstatus):
    # A run in which nothing passed (all skipped, or nothing found) is a failure.
    reporter = session.config.pluginmanager.get_plugin("terminalreporter")
    passed = len(reporter.stats.get("passed", [])) if reporter else 0
    if exitstatus == 0 and passed == 0:
        session.exitstatus = 1
