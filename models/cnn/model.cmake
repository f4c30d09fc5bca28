# The CNN models: trained files committed under cnn/<lang>/, and one
# configuration per language and encoding that reads them with the default
# model's analyzer. The word vector file of a GBK configuration is the
# committed one with its words converted, since the library matches words
# against the bytes of the text; the network files hold numbers only and
# serve both. Rebuild commands stand in README.md.
set(cnn_out ${PROJECT_BINARY_DIR}/models/cnn)

# Writes cnn_<lang>[_gbk].xml for the build tree and for installation, and
# installs the files it reads.
function(add_cnn_model CNN_LANG enc)
  set(CNN_DIR ${CMAKE_CURRENT_SOURCE_DIR}/cnn)
  set(MODEL_DICT zh_${enc}.dict)
  set(wordvec ${CNN_DIR}/${CNN_LANG}/cnn.wordvec)
  if(enc STREQUAL "gbk")
    set(MODEL_ENCODING gbk)
    set(suffix _gbk)
    set(wordvec ${cnn_out}/${CNN_LANG}/cnn_gbk.wordvec)
    file(MAKE_DIRECTORY ${cnn_out}/${CNN_LANG})
    add_custom_command(OUTPUT ${wordvec}
      COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/scripts/wordvec_encode.py
              ${CNN_DIR}/${CNN_LANG}/cnn.wordvec ${wordvec} gbk
      DEPENDS ${CNN_DIR}/${CNN_LANG}/cnn.wordvec ${CMAKE_CURRENT_SOURCE_DIR}/scripts/wordvec_encode.py
      COMMENT "Converting the ${CNN_LANG} CNN word vectors to GBK")
    add_custom_target(cnn_${CNN_LANG}_gbk ALL DEPENDS ${wordvec})
  else()
    set(MODEL_ENCODING utf-8)
    set(suffix "")
  endif()
  get_filename_component(wordvec_name ${wordvec} NAME)
  set(CNN_WORDVEC ${wordvec})
  set(MODEL_DICT_DIR ${model_out})
  set(MODEL_EN_DIR ${model_src}/en)
  configure_file(${CNN_DIR}/cnn.xml.in ${cnn_out}/cnn_${CNN_LANG}${suffix}.xml @ONLY)
  set(CNN_DIR .)
  set(CNN_WORDVEC ./${CNN_LANG}/${wordvec_name})
  set(MODEL_DICT_DIR ../default)
  set(MODEL_EN_DIR ../default/en)
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/cnn/cnn.xml.in
    ${PROJECT_BINARY_DIR}/models/install/cnn_${CNN_LANG}${suffix}.xml @ONLY)
  install(FILES ${wordvec} ${CMAKE_CURRENT_SOURCE_DIR}/cnn/${CNN_LANG}/cnn.model
    ${CMAKE_CURRENT_SOURCE_DIR}/cnn/${CNN_LANG}/cnn.param
    DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/cnn/${CNN_LANG})
  install(FILES ${PROJECT_BINARY_DIR}/models/install/cnn_${CNN_LANG}${suffix}.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/cnn)
endfunction()

foreach(lang zh en)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/cnn/${lang}/cnn.model)
    add_cnn_model(${lang} utf8)
    add_cnn_model(${lang} gbk)
  endif()
endforeach()
