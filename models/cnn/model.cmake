# The CNN models: trained files committed under cnn/<lang>/, and one UTF-8
# configuration per language that reads them with the default model's
# analyzer. Rebuild commands stand in README.md.
set(MODEL_ENCODING utf-8)
set(MODEL_DICT zh_utf8.dict)
foreach(CNN_LANG zh en)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/cnn/${CNN_LANG}/cnn.model)
    set(CNN_DIR ${CMAKE_CURRENT_SOURCE_DIR}/cnn)
    set(MODEL_DICT_DIR ${model_out})
    set(MODEL_EN_DIR ${model_src}/en)
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/cnn/cnn.xml.in ${PROJECT_BINARY_DIR}/models/cnn/cnn_${CNN_LANG}.xml @ONLY)
    set(CNN_DIR .)
    set(MODEL_DICT_DIR ../default)
    set(MODEL_EN_DIR ../default/en)
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/cnn/cnn.xml.in ${PROJECT_BINARY_DIR}/models/install/cnn_${CNN_LANG}.xml @ONLY)
    install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/cnn/${CNN_LANG}/cnn.wordvec cnn/${CNN_LANG}/cnn.model cnn/${CNN_LANG}/cnn.param
      DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/cnn/${CNN_LANG})
    install(FILES ${PROJECT_BINARY_DIR}/models/install/cnn_${CNN_LANG}.xml
      DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/cnn)
  endif()
endforeach()
