# Centroid models: the trained vocabularies and centroids are committed under
# centroid/ (models/scripts/train_centroid.sh rebuilds them) and read in place
# by the build-tree configurations. The combined model reuses the lexicon
# member of the weighted model, so the two never drift apart. Without its
# English member it is the default model of both encodings: the GBK form
# reads the same centroids through vocabularies whose n-grams are converted
# to GBK bytes.
set(centroid_src ${CMAKE_CURRENT_SOURCE_DIR}/centroid)
set(centroid_out ${PROJECT_BINARY_DIR}/models/centroid)
set(centroid_files ${centroid_src}/zh.vocab ${centroid_src}/zh.centroid ${centroid_src}/en.vocab
    ${centroid_src}/en.centroid)
file(MAKE_DIRECTORY ${centroid_out})
foreach(lang zh en)
  add_custom_command(OUTPUT ${centroid_out}/${lang}_gbk.vocab
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/scripts/vocab_to_gbk.py
            ${centroid_src}/${lang}.vocab ${centroid_out}/${lang}_gbk.vocab
    DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/scripts/vocab_to_gbk.py ${centroid_src}/${lang}.vocab
    COMMENT "Converting the ${lang} centroid vocabulary to GBK")
  list(APPEND centroid_gbk_files ${centroid_out}/${lang}_gbk.vocab)
endforeach()
add_custom_target(centroid_model ALL DEPENDS ${centroid_gbk_files})

file(READ ${centroid_src}/member.xml.in centroid_member_template)
file(READ ${weighted_src}/weighted.xml.in weighted_template)
string(REGEX MATCH "<classifier>.*</classifier>" lexicon_member_template "${weighted_template}")
# Member weights of the combined model, from models/scripts/tune_combined.py
# (the lexicon member keeps 1).
set(COMBINED_WEIGHT_ZH 0.25)
set(COMBINED_WEIGHT_EN 0.20)
foreach(where build install)
  foreach(enc utf8 gbk)
    if(enc STREQUAL "gbk")
      set(MODEL_ENCODING gbk)
      set(vocab_suffix _gbk)
    else()
      set(MODEL_ENCODING utf-8)
      set(vocab_suffix "")
    endif()
    set(MODEL_ENC ${enc})
    set(MODEL_DICT zh_${enc}.dict)
    if(where STREQUAL "build")
      set(CENTROID_DIR ${centroid_src})
      set(vocab_dir ${centroid_src})
      if(enc STREQUAL "gbk")
        set(vocab_dir ${centroid_out})
      endif()
      set(MODEL_DICT_DIR ${weighted_out})
      set(MODEL_EN_DIR ${model_src}/en)
      set(MODEL_LIST_DIR ${weighted_out}/lists_${enc})
      set(dest ${PROJECT_BINARY_DIR}/models)
    else()
      set(CENTROID_DIR ../centroid)
      set(vocab_dir ../centroid)
      set(MODEL_DICT_DIR ../weighted)
      set(MODEL_EN_DIR ../default/en)
      set(MODEL_LIST_DIR ../weighted/lists_${enc})
      set(dest ${PROJECT_BINARY_DIR}/models/install)
    endif()
    foreach(lang zh en)
      set(CENTROID_LANG ${lang})
      set(CENTROID_VOCAB ${vocab_dir}/${lang}${vocab_suffix}.vocab)
      if(lang STREQUAL "zh")
        set(CENTROID_MAX_N 3)
        set(CENTROID_LANGUAGE Chinese)
      else()
        set(CENTROID_MAX_N 5)
        set(CENTROID_LANGUAGE English)
      endif()
      string(CONFIGURE "${centroid_member_template}" CENTROID_MEMBER @ONLY)
      set(CENTROID_MEMBER_${lang} "${CENTROID_MEMBER}")
      if(enc STREQUAL "utf8")
        configure_file(${centroid_src}/centroid.xml.in ${dest}/centroid/centroid_${lang}.xml @ONLY)
      endif()
    endforeach()
    string(CONFIGURE "${lexicon_member_template}" LEXICON_MEMBER @ONLY)
    if(enc STREQUAL "utf8")
      set(ENGLISH_CENTROID_NOTE " and the English one")
      set(ENGLISH_CENTROID_CLASSIFIER "<classifier>
    <identifier>centroid_senti_classifier</identifier>
    <number_weight type=\"numeric\">${COMBINED_WEIGHT_EN}</number_weight>
    <param>
${CENTROID_MEMBER_en}
    </param>
  </classifier>")
      configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${dest}/combined/combined.xml @ONLY)
    endif()
    # The default is the combined model without the English centroid: that
    # one learnt film snippets and, on English reviews of other domains,
    # does worse than the lexicon alone. Both folders sit beside the
    # centroid and weighted ones, so the same relative paths serve.
    set(ENGLISH_CENTROID_NOTE "")
    set(ENGLISH_CENTROID_CLASSIFIER "")
    if(where STREQUAL "build")
      configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${model_out}/default_${enc}.xml @ONLY)
    else()
      configure_file(${CMAKE_CURRENT_SOURCE_DIR}/combined/combined.xml.in ${dest}/default_${enc}.xml @ONLY)
    endif()
  endforeach()
endforeach()
install(FILES ${centroid_files} ${centroid_gbk_files}
  ${PROJECT_BINARY_DIR}/models/install/centroid/centroid_zh.xml
  ${PROJECT_BINARY_DIR}/models/install/centroid/centroid_en.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/centroid)
install(FILES ${PROJECT_BINARY_DIR}/models/install/combined/combined.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/combined)
