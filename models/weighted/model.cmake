# The weighted model: the default model's lists plus the sentiment words
# learned from the training corpora, a weighted lexicon of learned word
# weights, and the scorer's degree-word lists. Learned files are committed
# (models/scripts/learn_weights.py rewrites them); binaries are build outputs.
set(weighted_out ${PROJECT_BINARY_DIR}/models/weighted)
set(weighted_src ${CMAKE_CURRENT_SOURCE_DIR}/weighted)
file(MAKE_DIRECTORY ${weighted_out})
set(weighted_zh_lists ${zh_lists}
  ${weighted_src}/learned/zh_learned_positive.txt ${weighted_src}/learned/zh_learned_negative.txt)
set(weighted_weights ${weighted_src}/learned/zh_weights.tsv ${weighted_src}/learned/en_weights.tsv)
set(weighted_lists before_only after_only negative_only positive_only negation_senti)
foreach(enc utf8 gbk)
  if(enc STREQUAL "gbk")
    set(encoding gbk)
  else()
    set(encoding utf-8)
  endif()
  add_model_dict(${weighted_out}/zh_${enc}.dict ${encoding} "Building the weighted model's ${encoding} dictionary"
    ${segmentation_list} ${weighted_zh_lists})
  add_custom_command(OUTPUT ${weighted_out}/weights_${enc}.lex
    COMMAND $<TARGET_FILE:vorelin> lexicon build --quiet --kind weighted --encoding ${encoding}
            --out ${weighted_out}/weights_${enc}.lex ${weighted_weights}
    DEPENDS vorelin ${weighted_weights}
    COMMENT "Building the weighted model's ${encoding} lexicon")
  add_model_dict(${weighted_out}/en_modifiers_${enc}.dict ${encoding}
    "Building the weighted model's English modifier dictionary (${encoding})" ${weighted_src}/en_modifiers.txt)
  list(APPEND weighted_files ${weighted_out}/zh_${enc}.dict ${weighted_out}/weights_${enc}.lex
    ${weighted_out}/en_modifiers_${enc}.dict)
  # The scorer compares the lists with token bytes, so they are kept in the
  # model's encoding.
  file(MAKE_DIRECTORY ${weighted_out}/lists_${enc})
  foreach(list ${weighted_lists})
    add_custom_command(OUTPUT ${weighted_out}/lists_${enc}/${list}.txt
      COMMAND iconv -f UTF-8 -t ${encoding} ${weighted_src}/${list}.txt > ${weighted_out}/lists_${enc}/${list}.txt
      DEPENDS ${weighted_src}/${list}.txt
      COMMENT "Converting the ${list} list to ${encoding}")
    list(APPEND weighted_files ${weighted_out}/lists_${enc}/${list}.txt)
  endforeach()
endforeach()
foreach(polarity positive negative)
  set(sources ${model_src}/en/${polarity}.txt ${model_src}/en/${polarity}_review.txt
    ${weighted_src}/learned/en_learned_${polarity}.txt)
  add_custom_command(OUTPUT ${weighted_out}/en_${polarity}.txt
    COMMAND cat ${sources} > ${weighted_out}/en_${polarity}.txt
    DEPENDS ${sources}
    COMMENT "Merging the weighted model's English ${polarity} word lists")
  list(APPEND weighted_files ${weighted_out}/en_${polarity}.txt)
endforeach()
add_custom_target(weighted_model ALL DEPENDS ${weighted_files})
add_dependencies(weighted_model zh_segmentation_list)

foreach(enc utf8 gbk)
  if(enc STREQUAL "gbk")
    set(MODEL_ENCODING gbk)
  else()
    set(MODEL_ENCODING utf-8)
  endif()
  set(MODEL_ENC ${enc})
  set(MODEL_DICT zh_${enc}.dict)
  set(MODEL_DICT_DIR ${weighted_out})
  set(MODEL_EN_DIR ${model_src}/en)
  set(MODEL_LIST_DIR ${weighted_out}/lists_${enc})
  configure_file(${weighted_src}/weighted.xml.in ${weighted_out}/weighted_${enc}.xml @ONLY)
  set(MODEL_DICT_DIR .)
  set(MODEL_EN_DIR ../default/en)
  set(MODEL_LIST_DIR lists_${enc})
  configure_file(${weighted_src}/weighted.xml.in ${PROJECT_BINARY_DIR}/models/install/weighted_${enc}.xml @ONLY)
  install(DIRECTORY ${weighted_out}/lists_${enc} DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/weighted)
endforeach()
install(FILES ${weighted_out}/zh_utf8.dict ${weighted_out}/zh_gbk.dict
  ${weighted_out}/en_modifiers_utf8.dict ${weighted_out}/en_modifiers_gbk.dict
  ${weighted_out}/weights_utf8.lex ${weighted_out}/weights_gbk.lex
  ${weighted_out}/en_positive.txt ${weighted_out}/en_negative.txt
  ${PROJECT_BINARY_DIR}/models/install/weighted_utf8.xml
  ${PROJECT_BINARY_DIR}/models/install/weighted_gbk.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/weighted)
install(FILES ${PROJECT_BINARY_DIR}/models/install/default_utf8.xml
  ${PROJECT_BINARY_DIR}/models/install/default_gbk.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/default)
