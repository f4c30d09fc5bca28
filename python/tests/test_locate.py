"""Finding the library and the model: argument, environment, install, build tree."""
import glob
import os
import shutil
import subprocess

import pytest

import vorelin
from conftest import BUILD, PYTHON_DIR, run_python

PROBE = ("import vorelin\nlib = vorelin.find_library()\n"
         "print(vorelin.__file__); print(lib); print(vorelin.find_model('gbk', lib))\n")


def probe(env, cwd):
    run = run_python(PROBE, env=env, cwd=cwd)
    assert run.returncode == 0, run.stderr
    return run.stdout.decode().splitlines()


def test_cmake_install_installs_a_package_that_finds_the_installed_files(tmp_path):
    prefix = tmp_path / "prefix"
    subprocess.run([shutil.which("cmake"), "--install", BUILD, "--prefix", str(prefix)], check=True,
                   capture_output=True, timeout=300)
    packages = glob.glob(str(prefix / "lib" / "python3*" / "dist-packages"))
    assert len(packages) == 1, os.listdir(str(prefix / "lib"))
    module, lib, model = probe({"PYTHONPATH": packages[0], "VORELIN_LIBRARY": "", "VORELIN_MODEL_DIR": ""},
                               str(tmp_path))
    assert module.startswith(packages[0])
    assert os.path.realpath(lib).startswith(str(prefix)) and os.path.isfile(lib)
    assert model == str(prefix / "share" / "vorelin" / "default" / "default_gbk.xml")
    assert os.path.isfile(model)


def test_environment_first_then_the_checkouts_build_tree(tmp_path):
    folder = tmp_path / "models"
    folder.mkdir()
    (folder / "default_gbk.xml").write_text("")
    assert probe({"VORELIN_MODEL_DIR": str(folder)}, str(tmp_path))[1:] == [
        os.environ["VORELIN_LIBRARY"], str(folder / "default_gbk.xml")]
    if glob.glob("/usr/lib*/libVorelin.so") + glob.glob("/usr/local/lib*/libVorelin.so"):
        return  # an installed library rightly comes before the build tree
    checkout_build = os.path.join(os.path.dirname(PYTHON_DIR), "build")
    if os.path.isfile(os.path.join(checkout_build, "libVorelin.so")):
        assert probe({"VORELIN_LIBRARY": "", "VORELIN_MODEL_DIR": ""}, str(tmp_path))[1:] == [
            os.path.join(checkout_build, "libVorelin.so"),
            os.path.join(checkout_build, "models", "default", "default_gbk.xml")]


def test_what_is_missing_is_named_with_every_place_searched(tmp_path, monkeypatch):
    missing = str(tmp_path / "nowhere" / "libVorelin.so")
    with pytest.raises(FileNotFoundError, match="nowhere/libVorelin.so"):
        vorelin.Classifier(library=missing)
    monkeypatch.setenv("VORELIN_LIBRARY", missing)
    with pytest.raises(FileNotFoundError, match="VORELIN_LIBRARY.*nowhere/libVorelin.so"):
        vorelin.Classifier()
    (tmp_path / "libVorelin.so").write_bytes(b"not an ELF file")
    with pytest.raises(OSError, match="cannot load"):
        vorelin.Classifier(library=str(tmp_path / "libVorelin.so"))

    # A copy of the package and library outside any build tree or prefix.
    shutil.copytree(os.path.join(PYTHON_DIR, "vorelin"), str(tmp_path / "pkg" / "vorelin"))
    os.mkdir(str(tmp_path / "lib"))
    shutil.copy(os.environ["VORELIN_LIBRARY_UNDER_TEST"], str(tmp_path / "lib" / "libVorelin.so"))
    (tmp_path / "models").mkdir()
    code = "import vorelin\ntry:\n    vorelin.Classifier()\nexcept FileNotFoundError as e:\n    print(e)\n"
    run = run_python(code, env={"PYTHONPATH": str(tmp_path / "pkg"), "VORELIN_MODEL_DIR": str(tmp_path / "models"),
                                "VORELIN_LIBRARY": str(tmp_path / "lib" / "libVorelin.so")}, cwd=str(tmp_path))
    if not glob.glob("/usr/*/share/vorelin/default/default_utf8.xml"):
        assert str(tmp_path / "models" / "default_utf8.xml") in run.stdout.decode(), run.stderr
