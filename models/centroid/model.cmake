# Centroid models: the trained vocabularies and centroids are committed under
# centroid/ (models/scripts/train_centroid.sh rebuilds them) and read in place
# by the build-tree configurations. The combined model reuses the lexicon
# member of the weighted model, so the two never drift apart.
set(centroid_src ${CMAKE_CURRENT_SOURCE_DIR}/centroid)
set(centroid_files ${centroid_src}/zh.vocab ${centroid_src}/zh.centroid ${centroid_src}/en.vocab
    ${centroid_src}/en.centroid)
file(READ ${centroid_src}/member.xml.in centroid_member_template)
file(READ ${weighted_src}/weighted.xml.in weighted_template)
string(REGEX MATCH "<classifier>.*</classifier>" lexicon_member_template "${weighted_template}")
# Member weights of the combined model, from models/scripts/tune_combined.py
# (the lexicon member keeps 1).
set(COMBINED_WEIGHT_ZH 0.25)
set(COMBINED_WEIGHT_EN 0.20)
set(MODEL_ENCODING utf-8)
set(MODEL_ENC utf8)
set(MODEL_DICT zh_utf8.dict)
foreach(where build install)
  if(where STREQUAL "build")
    set(CENTROID_DIR ${centroid_src})
    set(MODEL_DICT_DIR ${weighted_out})
    set(MODEL_EN_DIR ${model_src}/en)
    set(MODEL_LIST_DIR ${weighted_out}/lists_utf8)
    set(dest ${PROJECT_BINARY_DIR}/models)
  else()
    set(CENTROID_DIR ../centroid)
    set(MODEL_DICT_DIR ../weighted)
    set(MODEL_EN_DIR ../default/en)
    set(MODEL_LIST_DIR ../weighted/lists_utf8)
    set(dest ${PROJECT_BINARY_DIR}/models/install)
  endif()
  foreach(lang zh en)
    set(CENTROID_LANG ${lang})
    if(lang STREQUAL "zh")
      set(CENTROID_MAX_N 3)
      set(CENTROID_LANGUAGE Chinese)
    else()
      set(CENTROID_MAX_N 5)
      set(CENTROID_LANGUAGE English)
    endif()
    string(CONFIGURE "${centroid_member_template}" CENTROID_MEMBER @ONLY)
    set(CENTROID_MEMBER_${lang} "${CENTROID_MEMBER}")
    configure_file(${centroid_src}/centroid.xml.in ${dest}/centroid/centroid_${lang}.xml @ONLY)
  endforeach()
  string(CONFIGURE "${lexicon_member_template}" LEXICON_MEMBER @ONLY)
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${dest}/combined/combined.xml @ONLY)
  # The combined model is the UTF-8 default; both folders sit beside the
  # centroid and weighted ones, so the same relative paths serve.
  if(where STREQUAL "build")
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${model_out}/default_utf8.xml @ONLY)
  else()
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${dest}/default_utf8.xml @ONLY)
  endif()
endforeach()
install(FILES ${centroid_files}
  ${PROJECT_BINARY_DIR}/models/install/centroid/centroid_zh.xml
  ${PROJECT_BINARY_DIR}/models/install/centroid/centroid_en.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/centroid)
install(FILES ${PROJECT_BINARY_DIR}/models/install/combined/combined.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/combined)
