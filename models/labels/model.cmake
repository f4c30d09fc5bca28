# The label model: the default dictionary with attribute and context words
# added, a label lexicon, and the configurations that put a label classifier
# beside the default one (labels_*.xml) or alone (labels_only_*.xml).
set(label_out ${PROJECT_BINARY_DIR}/models/labels)
set(label_src ${CMAKE_CURRENT_SOURCE_DIR}/labels)
file(MAKE_DIRECTORY ${label_out})
# Weight of the label classifier beside the default one, chosen on the
# training lines and the dev set (see README.md).
set(VORELIN_LABEL_WEIGHT 1.0)
# Weak words carry a value for the label scorer only through the lexicon.
add_custom_command(OUTPUT ${label_out}/zh_weak_words.txt
  COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/scripts/weak_words_to_labels.py
          ${label_out}/zh_weak_words.txt ${model_src}/zh/pos_weak.txt=0.5 ${model_src}/zh/neg_weak.txt=-0.5
  DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/scripts/weak_words_to_labels.py ${model_src}/zh/pos_weak.txt
          ${model_src}/zh/neg_weak.txt
  COMMENT "Giving the weak sentiment words label lexicon values")
foreach(enc utf8 gbk)
  if(enc STREQUAL "gbk")
    set(encoding gbk)
  else()
    set(encoding utf-8)
  endif()
  # Context words last: they replace the weak tags the sentiment lists give
  # some of them.
  add_custom_command(OUTPUT ${label_out}/zh_labels_${enc}.dict
    COMMAND $<TARGET_FILE:vorelin> dict build --quiet --encoding ${encoding}
            --out ${label_out}/zh_labels_${enc}.dict ${segmentation_list} ${label_src}/zh/attributes.txt
            ${zh_lists} ${label_src}/zh/context.txt
    DEPENDS vorelin ${segmentation_list} ${zh_lists} ${label_src}/zh/attributes.txt ${label_src}/zh/context.txt
    COMMENT "Building the label model's ${encoding} dictionary")
  add_custom_command(OUTPUT ${label_out}/zh_labels_${enc}.lex
    COMMAND $<TARGET_FILE:vorelin> lexicon build --quiet --kind label --encoding ${encoding}
            --out ${label_out}/zh_labels_${enc}.lex ${label_out}/zh_weak_words.txt ${label_src}/zh/label_lexicon.txt
    DEPENDS vorelin ${label_out}/zh_weak_words.txt ${label_src}/zh/label_lexicon.txt
    COMMENT "Building the label model's ${encoding} label lexicon")
  add_custom_command(OUTPUT ${label_out}/inter_words_${enc}.txt
    COMMAND iconv -f UTF-8 -t ${encoding} ${label_src}/zh/inter_words.txt > ${label_out}/inter_words_${enc}.txt
    DEPENDS ${label_src}/zh/inter_words.txt
    COMMENT "Converting the label model's intermediary words to ${encoding}")
  list(APPEND label_files ${label_out}/zh_labels_${enc}.dict ${label_out}/zh_labels_${enc}.lex
       ${label_out}/inter_words_${enc}.txt)
endforeach()
add_custom_target(label_model ALL DEPENDS ${label_files} default_model)
add_dependencies(label_model zh_segmentation_list)

# The label classifier alone: the template without its first member.
file(READ ${label_src}/labels.xml.in label_template)
string(FIND "${label_template}" "  <classifier>" member_begin)
string(FIND "${label_template}" "  </classifier>\n" member_end)
string(LENGTH "  </classifier>\n" member_tail)
math(EXPR member_end "${member_end} + ${member_tail}")
string(SUBSTRING "${label_template}" 0 ${member_begin} only_head)
string(SUBSTRING "${label_template}" ${member_end} -1 only_tail)
file(WRITE ${label_out}/labels_only.xml.in "${only_head}${only_tail}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${label_src}/labels.xml.in)

foreach(enc utf8 gbk)
  if(enc STREQUAL "gbk")
    set(MODEL_ENCODING gbk)
  else()
    set(MODEL_ENCODING utf-8)
  endif()
  set(MODEL_DICT zh_${enc}.dict)
  set(LABEL_DICT zh_labels_${enc}.dict)
  set(LABEL_LEXICON zh_labels_${enc}.lex)
  set(LABEL_INTER inter_words_${enc}.txt)
  foreach(variant labels labels_only)
    if(variant STREQUAL "labels")
      set(DEFAULT_WEIGHT 1.0)
      set(LABEL_WEIGHT ${VORELIN_LABEL_WEIGHT})
      set(template ${label_src}/labels.xml.in)
    else()
      set(LABEL_WEIGHT 1.0)
      set(template ${label_out}/labels_only.xml.in)
    endif()
    set(MODEL_DICT_DIR ${model_out})
    set(MODEL_EN_DIR ${model_src}/en)
    set(LABEL_DIR ${label_out})
    configure_file(${template} ${label_out}/${variant}_${enc}.xml @ONLY)
    set(MODEL_DICT_DIR ../default)
    set(MODEL_EN_DIR ../default/en)
    set(LABEL_DIR .)
    configure_file(${template} ${PROJECT_BINARY_DIR}/models/install/${variant}_${enc}.xml @ONLY)
    list(APPEND label_configs ${PROJECT_BINARY_DIR}/models/install/${variant}_${enc}.xml)
  endforeach()
endforeach()
install(FILES ${label_files} ${label_configs} DESTINATION ${CMAKE_INSTALL_DATADIR}/vorelin/labels)
