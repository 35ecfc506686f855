require_relative "helper"
require_relative "../../lib/quillonbin2xml/model_walker"

# convert_model over stand-in host objects that answer only the calls the host offers.
class ModelWalkerTest < Minitest::Test
  include QuillonTestHelper

  # Anything that holds attribute dictionaries, as host materials and entities do.
  class Holder
    def initialize(dictionaries = {}) = @dictionaries = dictionaries
    def attribute_dictionary(name, create) = (raise "asked to create" if create; @dictionaries[name])
  end

  class Material < Holder
    attr_reader :name

    def initialize(name, dictionaries = {}) = (super(dictionaries); @name = name)
  end

  class Entity < Holder
    attr_reader :entityID

    def initialize(id, dictionaries = {}) = (super(dictionaries); @entityID = id)
  end

  # An entities collection that counts how often it is walked.
  class Entities
    attr_reader :walks

    def initialize(*items) = (@items, @walks = items, 0)
    def each(&) = (@walks += 1; @items.each(&))
  end

  class Group < Entity
    attr_reader :entities

    def initialize(id, entities) = (super(id); @entities = entities)
  end

  Definition = Struct.new(:entities)

  class Instance < Entity
    attr_reader :definition

    def initialize(id, definition) = (super(id); @definition = definition)
  end

  class Model < Holder
    attr_reader :materials, :entities

    def initialize(dictionaries, materials, entities) = (super(dictionaries); @materials, @entities = materials, entities)
  end

  def light(id, bytes, type) = Entity.new(id, GUID => { "light_data" => bytes, "light_type" => type })

  def test_walks_materials_lights_groups_and_each_definition_once
    spot = JSON.parse(File.read(File.join(SAMPLES, "light_type4_spot.json")))
    shared = Definition.new(Entities.new(light(30, spot, 4)))
    nested = Group.new(20, Entities.new(light(21, OMNI, 2), Instance.new(22, shared)))
    entities = Entities.new(light(10, OMNI, 1), nested, Instance.new(11, shared), Entity.new(12))
    materials = [Material.new("Brick", GUID => { "ombra_material" => BRICK, "ombra_material_type" => 1 }),
                 Material.new("Plain"),
                 Material.new("Host name", GUID => { "ombra_material" => [0, 0, 9, 0], "ombra_material_type" => 1,
                                                     "ombra_material_name" => "Stored name" }),
                 Material.new("Odd", GUID => { "ombra_material" => BRICK, "ombra_material_type" => "one" })]
    scene = JSON.parse(File.read(File.join(SAMPLES, "scene_type0_major6.json")))
    result = Quillonbin2xml.convert_model(Model.new({ GUID => { "serial_data" => scene } }, materials, entities))

    assert_equal Quillonbin2xml.serialize_to_xml(nil), result[:options]
    assert_equal [{ name: "Brick", type: 1, xml: Quillonbin2xml.convert_material(BRICK, 1) },
                  { name: "Stored name", type: 1, xml: nil, error: "the record was refused" }],
                 result[:materials].first(2)
    assert_equal ["Odd", "one", nil], result[:materials][2].values_at(:name, :type, :xml)
    assert_kind_of String, result[:materials][2][:error]
    lights = result[:lights].sort_by { |l| l[:entity] }
    assert_equal [[10, 1, nil], [21, 2, Quillonbin2xml.convert_light(OMNI, 2)], [30, 4, Quillonbin2xml.convert_light(spot, 4)]],
                 lights.map { |l| l.values_at(:entity, :type, :xml) }
    assert_equal [1, 1, 1], [entities.walks, nested.entities.walks, shared.entities.walks]
  end

  def test_model_without_a_record_gives_the_default_options_not_the_last_models
    scene = JSON.parse(File.read(File.join(SAMPLES, "scene_type0_major6.json")))
    assert Quillonbin2xml.old_deserialize(model_holding(scene))
    result = Quillonbin2xml.convert_model(Model.new({}, [], Entities.new))
    assert_equal({ options: Quillonbin2xml::DEFAULT_OPTIONS, materials: [], lights: [] }, result)
    refute_equal Quillonbin2xml.serialize_to_xml(nil), result[:options]
    assert_equal run_cli("options")[0], result[:options]
  end
end
